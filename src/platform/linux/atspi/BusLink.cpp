#include <platform/linux/atspi/BusLink.h>

#include <QDBusError>
#include <QDBusPendingCallWatcher>
#include <QFutureWatcher>
#include <QPromise>
#include <QThreadPool>
#include <QTimer>

#include <algorithm>
#include <array>
#include <atomic>

namespace tulvane {

namespace {

QString freshName()
{
    static std::atomic<int> count = 0;
    return QStringLiteral("tulvane-accessibility-%1").arg(++count);
}

/// Whether the other side has spoken, if only to refuse.
bool isAnswer(const QDBusMessage& message)
{
    if (message.type() == QDBusMessage::ReplyMessage)
        return true;
    const QDBusError error(message);
    const std::array silences{QDBusError::NoReply, QDBusError::Timeout, QDBusError::TimedOut,
                              QDBusError::Disconnected};
    return error.isValid() && std::ranges::find(silences, error.type()) == silences.end();
}

} // namespace

BusConnection::BusConnection(const QString& address) : m_name(freshName())
{
    QDBusConnection::connectToBus(address, m_name);
}

BusConnection::~BusConnection()
{
    QDBusConnection::disconnectFromBus(m_name);
}

bool BusConnection::isOpen() const
{
    return QDBusConnection(m_name).isConnected();
}

template <class T>
std::shared_ptr<PendingValue<T>> BusLink::begin()
{
    auto pending = std::make_shared<PendingValue<T>>();
    if (m_closed)
        pending->end();
    else
        m_pending.insert(pending);
    return pending;
}

template <class T>
void BusLink::end(const std::shared_ptr<PendingValue<T>>& pending, const T& value)
{
    // Who waits may let go of this link; nothing of it is touched after that.
    m_pending.erase(pending);
    pending->end(value);
}

void BusLink::giveUp(const std::shared_ptr<Pending>& pending)
{
    m_pending.erase(pending);
    pending->end();
}

Awaited<std::shared_ptr<BusConnection>> BusLink::open(const QString& address)
{
    using Opened = std::shared_ptr<BusConnection>;
    const auto pending = begin<Opened>();
    if (m_closed)
        return Awaited<Opened>(pending);
    // Being taken by a bus is a call that can only be waited for; a thread of the pool does that.
    auto promise = std::make_shared<QPromise<Opened>>();
    promise->start();
    auto* const watcher = new QFutureWatcher<Opened>(m_context.get());
    QObject::connect(watcher, &QFutureWatcher<Opened>::finished, m_context.get(),
                     [this, owner = m_lifetime.guard(), watcher, pending] {
                         watcher->deleteLater();
                         if (owner)
                             end(pending, watcher->result());
                     });
    watcher->setFuture(promise->future());
    QThreadPool::globalInstance()->start([promise, address] {
        promise->addResult(std::make_shared<BusConnection>(address));
        promise->finish();
    });
    QTimer::singleShot(callLimit, m_context.get(), [this, owner = m_lifetime.guard(), pending] {
        if (owner)
            giveUp(pending);
    });
    return Awaited<Opened>(pending);
}

Awaited<QDBusMessage> BusLink::call(const BusConnection& connection, const QDBusMessage& message,
                                    std::chrono::milliseconds limit)
{
    return call(QDBusConnection(connection.name()), message, limit);
}

Awaited<QDBusMessage> BusLink::call(const QDBusConnection& connection, const QDBusMessage& message,
                                    std::chrono::milliseconds limit)
{
    const auto pending = begin<QDBusMessage>();
    if (m_closed)
        return Awaited<QDBusMessage>(pending);
    const QDBusPendingCall call = connection.asyncCall(message, std::max(1, static_cast<int>(limit.count())));
    auto* const watcher = new QDBusPendingCallWatcher(call, m_context.get());
    QObject::connect(watcher, &QDBusPendingCallWatcher::finished, m_context.get(),
                     [this, owner = m_lifetime.guard(), watcher, pending] {
                         watcher->deleteLater();
                         if (!owner)
                             return;
                         const QDBusMessage answer = watcher->reply();
                         if (isAnswer(answer))
                             end(pending, answer);
                         else
                             giveUp(pending);
                     });
    return Awaited<QDBusMessage>(pending);
}

Awaited<bool> BusLink::pause(std::chrono::milliseconds duration)
{
    const auto pending = begin<bool>();
    if (m_closed)
        return Awaited<bool>(pending);
    QTimer::singleShot(duration, m_context.get(), [this, owner = m_lifetime.guard(), pending] {
        if (owner)
            end(pending, true);
    });
    return Awaited<bool>(pending);
}

void BusLink::close()
{
    m_closed = true;
    m_lifetime.end();
    // Perhaps this runs in one of their slots, so they go when that is done.
    if (m_context)
        m_context.release()->deleteLater();
    const auto pending = std::exchange(m_pending, {});
    for (const auto& wait : pending)
        wait->end();
}

} // namespace tulvane
