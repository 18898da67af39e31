#include <platform/linux/atspi/Announcement.h>

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusVariant>
#include <QVariantMap>

namespace tulvane {

namespace {

/// The toolkit's own connection, by the name that it gives it. Assistive programs know this program by it,
/// and listeners ignore an announcement of any other sender. The toolkit itself can announce nothing before
/// its 6.8.
const QString toolkits = QStringLiteral("a11y");
const QString application = QStringLiteral("/org/a11y/atspi/accessible/root");
constexpr int politely = 1;

} // namespace

void announce(const QString& text)
{
    const QDBusConnection bus(toolkits);
    if (text.isEmpty() || !bus.isConnected())
        return;
    QDBusMessage event = QDBusMessage::createSignal(
        application, QStringLiteral("org.a11y.atspi.Event.Object"), QStringLiteral("Announcement"));
    event << QString() << politely << 0 << QVariant::fromValue(QDBusVariant(text)) << QVariantMap();
    bus.send(event);
}

} // namespace tulvane
