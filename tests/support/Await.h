#pragma once

#include <QCoreApplication>
#include <QDeadlineTimer>
#include <QEventLoop>
#include <QFuture>
#include <QFutureWatcher>
#include <QTimer>

#include <chrono>
#include <stdexcept>

namespace tulvane::test {

inline constexpr std::chrono::milliseconds defaultTimeout{20000};

/// Runs the event loop until the predicate holds; false when the time limit passes first.
template <class Predicate>
[[nodiscard]] bool waitUntil(Predicate&& predicate, std::chrono::milliseconds timeout = defaultTimeout)
{
    const QDeadlineTimer deadline(timeout);
    // Wakes the loop: with a limit of its own, processEvents would not wait, and would keep a processor busy.
    QTimer tick;
    tick.start(std::chrono::milliseconds(2));
    while (!predicate()) {
        if (deadline.hasExpired())
            return false;
        QCoreApplication::processEvents(QEventLoop::AllEvents | QEventLoop::WaitForMoreEvents);
    }
    return true;
}

/// Runs the event loop for that long. For what must not happen, and for a program that gives no sign of being
/// done.
inline void runEventLoopFor(std::chrono::milliseconds time)
{
    static_cast<void>(waitUntil([] { return false; }, time));
}

/// Runs the event loop until the future is finished and returns its result. Throws when it takes too long.
template <class T>
[[nodiscard]] T await(QFuture<T> future, std::chrono::milliseconds timeout = defaultTimeout)
{
    QEventLoop loop;
    QFutureWatcher<T> watcher;
    QObject::connect(&watcher, &QFutureWatcher<T>::finished, &loop, &QEventLoop::quit);
    QTimer::singleShot(timeout, &loop, &QEventLoop::quit);
    watcher.setFuture(future);
    if (!future.isFinished())
        loop.exec();
    if (!future.isFinished())
        throw std::runtime_error("the future did not finish in time");
    return future.takeResult();
}

} // namespace tulvane::test
