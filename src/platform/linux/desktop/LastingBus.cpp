#include <base/Log.h>
#include <platform/linux/desktop/BusReturn.h>
#include <platform/linux/desktop/LastingBus.h>
#include <platform/linux/desktop/OwnConnection.h>

namespace tulvane {

namespace {

/// Where the system's bus is, as its library finds it.
QString systemBusAddress()
{
    const QString given = qEnvironmentVariable("DBUS_SYSTEM_BUS_ADDRESS");
    return given.isEmpty() ? QStringLiteral("unix:path=/var/run/dbus/system_bus_socket") : given;
}

} // namespace

LastingBus::LastingBus(const QString& address)
    : m_own(std::make_shared<OwnConnection>(address)),
      m_connection(m_own->bus())
{
    follow(address);
}

LastingBus::LastingBus(const QDBusConnection& connection, const QString& address) : m_connection(connection)
{
    follow(address);
}

LastingBus::~LastingBus() = default;

std::shared_ptr<LastingBus> LastingBus::session()
{
    static std::weak_ptr<LastingBus> known;
    return shared(known, QDBusConnection::sessionBus(), {});
}

std::shared_ptr<LastingBus> LastingBus::system()
{
    static std::weak_ptr<LastingBus> known;
    return shared(known, QDBusConnection::systemBus(), systemBusAddress());
}

std::shared_ptr<LastingBus> LastingBus::shared(std::weak_ptr<LastingBus>& known,
                                               const QDBusConnection& connection, const QString& address)
{
    auto bus = known.lock();
    if (!bus) {
        bus.reset(new LastingBus(connection, address));
        known = bus;
    }
    return bus;
}

void LastingBus::follow(const QString& address)
{
    if (!m_connection.isConnected())
        return;
    m_return = std::make_unique<BusReturn>(m_connection, address,
                                           [this](const std::shared_ptr<OwnConnection>& connection) {
                                               const auto before = std::exchange(m_own, connection);
                                               m_connection = connection->bus();
                                               qCInfo(lcApp, "A bus is back");
                                               Q_EMIT returned();
                                           });
    connect(m_return.get(), &BusReturn::lost, this, &LastingBus::lost);
}

} // namespace tulvane
