#include <base/async/TaskFuture.h>
#include <platform/linux/atspi/AtspiFocusedElement.h>
#include <platform/linux/atspi/AtspiFocusedElements.h>

#include <QDBusConnection>
#include <QDBusConnectionInterface>
#include <QDBusReply>
#include <QFileInfo>

namespace tulvane {

/// Held also by questions that are on their way when the adapter goes.
struct AtspiFocusedElements::Shared {
    QString sessionAddress;
    FrontProcess front;
    std::shared_ptr<BusLink> link = std::make_shared<BusLink>();
    std::shared_ptr<AccessibilityBus> bus; ///< once reached

    static QCoro::Task<std::shared_ptr<FocusedElement>> focused(std::shared_ptr<Shared> shared)
    {
        // A bus that has gone may have come back under another address.
        std::shared_ptr<AccessibilityBus> bus = shared->bus;
        if (!bus || !bus->isOpen()) {
            bus = co_await AccessibilityBus::open(shared->link, shared->sessionAddress, shared->front);
            shared->bus = bus;
        }
        if (!bus)
            co_return std::shared_ptr<FocusedElement>();
        FocusSearch search(bus);
        const auto place = co_await search.run();
        if (!place)
            co_return std::shared_ptr<FocusedElement>();
        co_return std::shared_ptr<FocusedElement>(std::make_shared<AtspiFocusedElement>(bus, *place));
    }
};

AtspiFocusedElements::AtspiFocusedElements(QString sessionBusAddress, FrontProcess front)
    : m_shared(std::make_shared<Shared>())
{
    m_shared->sessionAddress = std::move(sessionBusAddress);
    m_shared->front = std::move(front);
}

AtspiFocusedElements::~AtspiFocusedElements()
{
    m_shared->link->close();
}

QFuture<std::shared_ptr<FocusedElement>> AtspiFocusedElements::focused()
{
    if (m_shared->sessionAddress.isEmpty())
        return QtFuture::makeReadyFuture(std::shared_ptr<FocusedElement>());
    return futureOf(Shared::focused(m_shared));
}

QString AtspiFocusedElements::usersSessionBus()
{
    const QString address = qEnvironmentVariable("DBUS_SESSION_BUS_ADDRESS");
    if (!address.isEmpty())
        return address;
    const QString folder = qEnvironmentVariable("XDG_RUNTIME_DIR");
    const QString socket = folder + u"/bus";
    return !folder.isEmpty() && QFileInfo::exists(socket) ? u"unix:path=" + socket : QString();
}

bool AtspiFocusedElements::isOffered(const QString& sessionBusAddress)
{
    if (sessionBusAddress.isEmpty())
        return false;
    const QString service = QStringLiteral("org.a11y.Bus");
    const QString name = QStringLiteral("tulvane-accessibility-offer");
    const QDBusConnection bus = QDBusConnection::connectToBus(sessionBusAddress, name);
    const bool offered =
        bus.isConnected() && (bus.interface()->isServiceRegistered(service) ||
                              bus.interface()->activatableServiceNames().value().contains(service));
    QDBusConnection::disconnectFromBus(name);
    return offered;
}

} // namespace tulvane
