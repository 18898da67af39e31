#pragma once

#include <ports/RemoteControl.h>

#include <QDBusConnection>

#include <memory>

namespace tulvane {

class RemoteObject;

/// Over D-Bus: the running program owns the name "com.dunio.Tulvane" of the session bus, so there is one per
/// session, and the bus itself says whether it runs.
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
    QString m_name; ///< of the connection, in this process
    QDBusConnection m_bus;
    std::unique_ptr<RemoteObject> m_object;
};

} // namespace tulvane
