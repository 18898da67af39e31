#include <platform/linux/desktop/BusAnswer.h>
#include <platform/linux/desktop/ScreenSavers.h>

#include <QDBusServiceWatcher>

#include <array>

namespace tulvane {

namespace {

/// Each is the name on the bus, the interface and, written as a path, the object.
const std::array savers{QStringLiteral("org.freedesktop.ScreenSaver"),
                        QStringLiteral("org.gnome.ScreenSaver"), QStringLiteral("org.cinnamon.ScreenSaver"),
                        QStringLiteral("org.mate.ScreenSaver"), QStringLiteral("org.xfce.ScreenSaver")};

QString pathOf(const QString& name)
{
    return u'/' + QString(name).replace(u'.', u'/');
}

} // namespace

ScreenSavers::ScreenSavers(const QDBusConnection& bus) : m_bus(bus)
{
    if (!m_bus.isConnected())
        return;
    auto* const watcher = new QDBusServiceWatcher(this);
    watcher->setConnection(m_bus);
    connect(watcher, &QDBusServiceWatcher::serviceOwnerChanged, this,
            [this](const QString& name, const QString&, const QString& owner) {
                owner.isEmpty() ? setActive(name, false) : ask(name);
            });
    for (const QString& name : savers) {
        watcher->addWatchedService(name);
        // From any path: some desktops have their saver at two.
        m_bus.connect(name, QString(), name, QStringLiteral("ActiveChanged"), this,
                      SLOT(note(bool, QDBusMessage)));
        ask(name);
    }
}

ScreenSavers::~ScreenSavers() = default;

void ScreenSavers::ask(const QString& name)
{
    QDBusMessage call = QDBusMessage::createMethodCall(name, pathOf(name), name, QStringLiteral("GetActive"));
    call.setAutoStartService(false);
    whenAnswered<bool>(m_bus.asyncCall(call), this, [this, name](const auto& reply) {
        if (!reply.isError())
            setActive(name, reply.value());
    });
}

void ScreenSavers::note(bool active, const QDBusMessage& signal)
{
    setActive(signal.interface(), active);
}

void ScreenSavers::setActive(const QString& name, bool active)
{
    const bool before = isActive();
    if (active)
        m_active.insert(name);
    else
        m_active.remove(name);
    if (isActive() != before)
        Q_EMIT changed();
}

} // namespace tulvane
