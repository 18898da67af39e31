#pragma once

#include <QEventLoop>
#include <QFuture>
#include <QFutureWatcher>

namespace tulvane {

/// Runs the event loop until the future has finished, and returns its result. For futures that always finish
/// with one. Main thread.
template <class T>
[[nodiscard]] T waitFor(QFuture<T> future)
{
    QEventLoop loop;
    QFutureWatcher<T> watcher;
    QObject::connect(&watcher, &QFutureWatcher<T>::finished, &loop, &QEventLoop::quit);
    watcher.setFuture(future);
    if (!future.isFinished())
        loop.exec();
    return future.takeResult();
}

} // namespace tulvane
