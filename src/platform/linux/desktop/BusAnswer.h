#pragma once

#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>

#include <utility>

namespace tulvane {

/// Calls `handle` once with the answer to a pending call, an error included, as a QDBusPendingReply<T...>;
/// not after `context` has gone. Main thread.
template <class... T, class Handle>
void whenAnswered(const QDBusPendingCall& pending, QObject* context, Handle handle)
{
    auto* const watcher = new QDBusPendingCallWatcher(pending, context);
    QObject::connect(watcher, &QDBusPendingCallWatcher::finished, context,
                     [watcher, handle = std::move(handle)]() mutable {
                         handle(QDBusPendingReply<T...>(*watcher));
                         watcher->deleteLater();
                     });
}

} // namespace tulvane
