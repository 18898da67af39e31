#pragma once

#include <QDBusConnection>
#include <QObject>
#include <QString>

#include <functional>
#include <memory>

namespace tulvane {

class OwnConnection;

/// A bus can end and come back at the same address, as when the user's service manager starts it anew.
/// Follows a connection, and once the connection is lost, tries every two seconds for another. Main thread;
/// never blocks it.
class BusReturn final : public QObject {
    Q_OBJECT

public:
    using Returned = std::function<void(std::shared_ptr<OwnConnection>)>;

    /// `address` as `OwnConnection` takes it. `returned` receives the new connection, which is followed as
    /// the first was.
    BusReturn(const QDBusConnection& connection, QString address, Returned returned);

Q_SIGNALS:
    /// The connection that was followed is of no use any more.
    void lost();

private Q_SLOTS:
    void noteLoss();

private:
    void follow(QDBusConnection connection);
    void connectAgain();

    QString m_address;
    Returned m_returned;
};

} // namespace tulvane
