#pragma once

#include <QCoroTask>
#include <QFuture>
#include <QPromise>

#include <memory>
#include <utility>

namespace tulvane {

template <class T>
QCoro::Task<> fulfil(std::shared_ptr<QPromise<T>> promise, QCoro::Task<T> task)
{
    T value = co_await task;
    promise->addResult(std::move(value));
    promise->finish();
}

/// The task's result as a future, which finishes when the task does.
template <class T>
[[nodiscard]] QFuture<T> futureOf(QCoro::Task<T> task)
{
    const auto promise = std::make_shared<QPromise<T>>();
    promise->start();
    QFuture<T> future = promise->future();
    fulfil(promise, std::move(task));
    return future;
}

} // namespace tulvane
