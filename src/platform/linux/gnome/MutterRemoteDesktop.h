#pragma once

#include <base/async/Lifetime.h>
#include <platform/linux/atspi/BusLink.h>
#include <platform/linux/remote/RemoteDesktop.h>

#include <QDBusMessage>
#include <QVariantList>

#include <memory>
#include <optional>

namespace tulvane {

/// GNOME's own service for remote control, which asks the user nothing. While a session of it is open a sign
/// stands in the top bar. What lets go of a key that is down on another keyboard does nothing there.
class MutterRemoteDesktop final : public RemoteDesktop {
public:
    explicit MutterRemoteDesktop(QString sessionBusAddress);
    ~MutterRemoteDesktop() override;
    MutterRemoteDesktop(const MutterRemoteDesktop&) = delete;
    MutterRemoteDesktop& operator=(const MutterRemoteDesktop&) = delete;

    /// Whether the desktop has the service, and gives us a session: it is GNOME's own, and may refuse other
    /// programs one day. A service that is slow to answer counts as one that does, and so does one while the
    /// screen is locked. Without an address, on the user's bus. Blocks for a moment.
    [[nodiscard]] static bool isOffered(const QString& sessionBusAddress);

    [[nodiscard]] QCoro::Task<QString> open() override;
    QCoro::Task<> close(QString session) override;
    [[nodiscard]] QCoro::Task<bool> key(QString session, quint32 evdev, bool isDown) override;
    QCoro::Task<> catchUp(QString session) override;

private:
    QCoro::Task<std::optional<QDBusMessage>> ask(QString path, QString interface, QString method,
                                                 QVariantList arguments);

    QString m_address;
    BusLink m_link;
    std::shared_ptr<BusConnection> m_connection;
    Lifetime m_lifetime;
};

} // namespace tulvane
