#pragma once

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
    BusReturn(const OwnConnection& connection, QString address, Returned returned);

private Q_SLOTS:
    void connectAgain();

private:
    void follow(const OwnConnection& connection);

    QString m_address;
    Returned m_returned;
};

} // namespace tulvane
