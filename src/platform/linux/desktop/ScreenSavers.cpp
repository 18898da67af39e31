#include <platform/linux/desktop/BusAnswer.h>
#include <platform/linux/desktop/LastingBus.h>
#include <platform/linux/desktop/ScreenSavers.h>

#include <QDBusConnection>

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

bool hasNoOwner(const QDBusError& error)
{
    return error.type() == QDBusError::ServiceUnknown ||
           error.name() == u"org.freedesktop.DBus.Error.NameHasNoOwner";
}

} // namespace

ScreenSavers::ScreenSavers(std::shared_ptr<LastingBus> bus) : m_bus(std::move(bus))
{
    for (const QString& name : savers)
        m_watcher.addWatchedService(name);
    connect(&m_watcher, &QDBusServiceWatcher::serviceOwnerChanged, this,
            [this](const QString& name, const QString&, const QString& owner) {
                owner.isEmpty() ? setActive(name, false) : ask(name);
            });
    connect(m_bus.get(), &LastingBus::returned, this, &ScreenSavers::listen);
    listen();
}

ScreenSavers::~ScreenSavers() = default;

void ScreenSavers::listen()
{
    QDBusConnection bus = m_bus->connection();
    if (!bus.isConnected())
        return;
    m_watcher.setConnection(bus);
    for (const QString& name : savers) {
        // From any path: some desktops have their saver at two.
        bus.connect(name, QString(), name, QStringLiteral("ActiveChanged"), this,
                    SLOT(note(bool, QDBusMessage)));
        ask(name);
    }
}

void ScreenSavers::ask(const QString& name)
{
    QDBusMessage call = QDBusMessage::createMethodCall(name, pathOf(name), name, QStringLiteral("GetActive"));
    call.setAutoStartService(false);
    whenAnswered<bool>(m_bus->connection().asyncCall(call), this, [this, name](const auto& reply) {
        if (!reply.isError())
            setActive(name, reply.value());
        else if (hasNoOwner(reply.error()))
            setActive(name, false);
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
