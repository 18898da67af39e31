#pragma once

#include <QDBusConnection>
#include <QObject>
#include <QString>

#include <memory>

namespace tulvane {

class BusReturn;
class OwnConnection;

/// A bus that its users outlive: it may end and come back at the same address, and is then reached over
/// another connection. What was subscribed to or watched over the one before is to be set up anew. A bus that
/// was not there when this was made never comes. Main thread.
class LastingBus final : public QObject {
    Q_OBJECT

public:
    /// Over a connection of its own; `address` as `OwnConnection` takes it. Blocks as that does.
    explicit LastingBus(const QString& address);
    ~LastingBus() override;

    /// The session's and the system's, over the connections that the toolkit shares; one object for all
    /// users.
    [[nodiscard]] static std::shared_ptr<LastingBus> session();
    [[nodiscard]] static std::shared_ptr<LastingBus> system();

    /// As it is now; not connected while the bus is gone.
    [[nodiscard]] QDBusConnection connection() const { return m_connection; }

Q_SIGNALS:
    void lost();
    /// `connection` is another one, and connected.
    void returned();

private:
    LastingBus(const QDBusConnection& connection, const QString& address);
    /// The one that is known, or a new one where its last user has gone.
    [[nodiscard]] static std::shared_ptr<LastingBus>
    shared(std::weak_ptr<LastingBus>& known, const QDBusConnection& connection, const QString& address);
    void follow(const QString& address);

    std::shared_ptr<OwnConnection> m_own; ///< null while the connection is the toolkit's
    QDBusConnection m_connection;
    std::unique_ptr<BusReturn> m_return;
};

} // namespace tulvane
