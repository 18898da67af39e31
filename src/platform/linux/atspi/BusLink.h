#pragma once

#include <base/async/Lifetime.h>
#include <base/async/PendingValue.h>

#include <QDBusConnection>
#include <QDBusMessage>
#include <QObject>
#include <QString>

#include <chrono>
#include <memory>
#include <set>

namespace tulvane {

/// A connection of our own to a message bus; closed with the last who holds it. Any thread.
class BusConnection final {
public:
    /// Blocks until the bus has answered; see `isOpen` for whether it has taken us.
    explicit BusConnection(const QString& address);
    BusConnection(const BusConnection&) = delete;
    BusConnection& operator=(const BusConnection&) = delete;
    ~BusConnection();

    [[nodiscard]] QString name() const { return m_name; }
    [[nodiscard]] bool isOpen() const;

private:
    QString m_name;
};

/// Everything that the adapter waits for: each wait ends in bounded time, and all at once with `close`.
/// Nothing blocks. Main thread.
class BusLink final {
public:
    /// For one call, and for the opening of a connection.
    static constexpr std::chrono::milliseconds callLimit{500};

    BusLink() = default;
    BusLink(const BusLink&) = delete;
    BusLink& operator=(const BusLink&) = delete;
    ~BusLink() { close(); }

    /// Nothing where the bus does not answer in time; a connection that is not open where it refuses.
    [[nodiscard]] Awaited<std::shared_ptr<BusConnection>> open(const QString& address);
    /// The answer, which may be an error; nothing where none came in time.
    [[nodiscard]] Awaited<QDBusMessage> call(const BusConnection& connection, const QDBusMessage& message,
                                             std::chrono::milliseconds limit = callLimit);
    /// The same over a connection that others use as well.
    [[nodiscard]] Awaited<QDBusMessage> call(const QDBusConnection& connection, const QDBusMessage& message,
                                             std::chrono::milliseconds limit = callLimit);
    [[nodiscard]] Awaited<bool> pause(std::chrono::milliseconds duration);

    /// Ends every wait, with nothing, and whatever is asked from now on at once.
    void close();

private:
    template <class T>
    std::shared_ptr<PendingValue<T>> begin();
    template <class T>
    void end(const std::shared_ptr<PendingValue<T>>& pending, const T& value);
    void giveUp(const std::shared_ptr<Pending>& pending);

    std::set<std::shared_ptr<Pending>> m_pending;
    bool m_closed = false;
    Lifetime m_lifetime; ///< ended by closing: timers and watchers may still fire then
    std::unique_ptr<QObject> m_context = std::make_unique<QObject>(); ///< of timers and watchers
};

} // namespace tulvane
