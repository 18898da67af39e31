#pragma once

#include <ports/RemoteControl.h>

#include <memory>

namespace tulvane {

class BusReturn;
class OwnConnection;
class RemoteObject;

/// Over D-Bus: the running program owns the name "com.dunio.Tulvane" of the session bus, so there is one per
/// session, and the bus itself says whether it runs. Where the bus ends and comes back, the running program
/// takes its name again, unless another process has taken it meanwhile.
class DBusRemoteControl final : public RemoteControl {
public:
    /// `address` of a bus as in DBUS_SESSION_BUS_ADDRESS; empty for the session's own. Connects when made.
    explicit DBusRemoteControl(const QString& address = {});
    ~DBusRemoteControl() override;
    DBusRemoteControl(const DBusRemoteControl&) = delete;
    DBusRemoteControl& operator=(const DBusRemoteControl&) = delete;

    [[nodiscard]] Claim claim(Answer answer) override;
    void announcePhase(const QString& phase) override;
    [[nodiscard]] QFuture<Result<QJsonObject, RemoteError>> ask(RemoteRequest request,
                                                                const QString& argument = {}) override;

private:
    void showObject();
    void goOnOver(std::shared_ptr<OwnConnection> connection);

    QString m_address;
    std::shared_ptr<OwnConnection> m_connection;
    std::unique_ptr<RemoteObject> m_object;
    std::unique_ptr<BusReturn> m_return; ///< of a granted claim
};

} // namespace tulvane
