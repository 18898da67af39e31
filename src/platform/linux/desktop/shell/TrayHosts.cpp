#include <platform/linux/desktop/BusAnswer.h>
#include <platform/linux/desktop/shell/TrayHosts.h>

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusVariant>

#include <utility>

namespace tulvane {

namespace {

const QString watcherName = QStringLiteral("org.kde.StatusNotifierWatcher");
const QString watcherPath = QStringLiteral("/StatusNotifierWatcher");

} // namespace

TrayHosts::TrayHosts(std::shared_ptr<LastingBus> bus) : m_bus(std::move(bus))
{
    m_watcher.addWatchedService(watcherName);
    connect(&m_watcher, &QDBusServiceWatcher::serviceRegistered, this, &TrayHosts::ask);
    connect(&m_watcher, &QDBusServiceWatcher::serviceUnregistered, this, [this] { setThere(false); });
    connect(m_bus.get(), &LastingBus::lost, this, [this] { setThere(false); });
    connect(m_bus.get(), &LastingBus::returned, this, [this] {
        if (onNewBus)
            onNewBus();
        listen();
    });
    listen();
}

TrayHosts::~TrayHosts() = default;

void TrayHosts::listen()
{
    QDBusConnection bus = m_bus->connection();
    m_watcher.setConnection(bus);
    // The book-keeper of the icons is there before the first bar is.
    bus.connect(watcherName, watcherPath, watcherName, QStringLiteral("StatusNotifierHostRegistered"), this,
                SLOT(ask()));
    bus.connect(watcherName, watcherPath, watcherName, QStringLiteral("StatusNotifierHostUnregistered"), this,
                SLOT(ask()));
    ask();
}

void TrayHosts::ask()
{
    QDBusMessage call = QDBusMessage::createMethodCall(
        watcherName, watcherPath, QStringLiteral("org.freedesktop.DBus.Properties"), QStringLiteral("Get"));
    call << watcherName << QStringLiteral("IsStatusNotifierHostRegistered");
    call.setAutoStartService(false);
    whenAnswered<QDBusVariant>(m_bus->connection().asyncCall(call), this, [this](const auto& reply) {
        setThere(!reply.isError() && reply.value().variant().toBool());
    });
}

void TrayHosts::setThere(bool isThere)
{
    const bool wasThere = std::exchange(m_isThere, isThere);
    if (isThere && onArrival)
        onArrival();
    else if (wasThere && !isThere && onDeparture)
        onDeparture();
}

} // namespace tulvane
