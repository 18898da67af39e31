#pragma once

#include <QDBusConnection>
#include <QString>

namespace tulvane {

/// A connection to a bus that is shared with nothing else in the process, and closed with this object. Made
/// and destroyed on any thread.
class OwnConnection final {
public:
    /// `address` of a bus as in DBUS_SESSION_BUS_ADDRESS; empty for the session's own. Blocks until the bus
    /// has answered, or has failed to for 25 seconds.
    explicit OwnConnection(const QString& address);
    OwnConnection(const OwnConnection&) = delete;
    OwnConnection& operator=(const OwnConnection&) = delete;
    ~OwnConnection();

    [[nodiscard]] QDBusConnection bus() const { return QDBusConnection(m_name); }

private:
    QString m_name; ///< of the connection, in this process
};

} // namespace tulvane
