#include <platform/linux/desktop/BusReturn.h>
#include <platform/linux/desktop/OwnConnection.h>

#include <QFutureWatcher>
#include <QPromise>
#include <QThreadPool>
#include <QTimer>

#include <chrono>

namespace tulvane {

namespace {

using Opened = std::shared_ptr<OwnConnection>;

constexpr std::chrono::seconds pauseBetween{2};

} // namespace

BusReturn::BusReturn(const QDBusConnection& connection, QString address, Returned returned)
    : m_address(std::move(address)),
      m_returned(std::move(returned))
{
    follow(connection);
}

void BusReturn::follow(QDBusConnection connection)
{
    // The signal does not come over the bus: the connection itself sends it.
    connection.connect({}, QStringLiteral("/org/freedesktop/DBus/Local"),
                       QStringLiteral("org.freedesktop.DBus.Local"), QStringLiteral("Disconnected"), this,
                       SLOT(noteLoss()));
}

void BusReturn::noteLoss()
{
    Q_EMIT lost();
    connectAgain();
}

void BusReturn::connectAgain()
{
    // Being taken by a bus is a call that can only be waited for; a thread of the pool does that.
    auto promise = std::make_shared<QPromise<Opened>>();
    promise->start();
    auto* const watcher = new QFutureWatcher<Opened>(this);
    connect(watcher, &QFutureWatcher<Opened>::finished, this, [this, watcher] {
        watcher->deleteLater();
        const Opened connection = watcher->result();
        if (!connection->bus().isConnected()) {
            QTimer::singleShot(pauseBetween, this, &BusReturn::connectAgain);
            return;
        }
        follow(connection->bus());
        m_returned(connection);
    });
    watcher->setFuture(promise->future());
    QThreadPool::globalInstance()->start([promise, address = m_address] {
        promise->addResult(std::make_shared<OwnConnection>(address));
        promise->finish();
    });
}

} // namespace tulvane
