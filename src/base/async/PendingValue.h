#pragma once

#include <coroutine>
#include <memory>
#include <optional>
#include <utility>

namespace tulvane {

/// A wait of one coroutine, as seen by the code that will end it. Main thread.
class Pending {
public:
    Pending() = default;
    Pending(const Pending&) = delete;
    Pending& operator=(const Pending&) = delete;
    virtual ~Pending() = default;

    [[nodiscard]] bool isOver() const { return m_over; }
    /// Ends the wait without a value, and resumes the coroutine at once. A second call does nothing.
    void end()
    {
        if (std::exchange(m_over, true))
            return;
        if (const auto waiter = std::exchange(m_waiter, nullptr))
            waiter.resume();
    }

private:
    template <class T>
    friend class Awaited;

    std::coroutine_handle<> m_waiter;
    bool m_over = false;
};

/// The same for a value that is to come. Ended without one, none came.
template <class T>
class PendingValue final : public Pending {
public:
    void end(T value)
    {
        if (!isOver())
            m_value = std::move(value);
        Pending::end();
    }
    using Pending::end;

private:
    template <class>
    friend class Awaited;

    std::optional<T> m_value;
};

/// The coroutine's side of a pending value: awaited once, by one coroutine. Unlike the watcher of a future it
/// needs no turn of the event loop, so a wait can also be ended after the last one.
template <class T>
class Awaited {
public:
    explicit Awaited(std::shared_ptr<PendingValue<T>> pending) : m_pending(std::move(pending)) {}

    [[nodiscard]] bool await_ready() const noexcept { return m_pending->isOver(); }
    void await_suspend(std::coroutine_handle<> waiter) noexcept { m_pending->m_waiter = waiter; }
    [[nodiscard]] std::optional<T> await_resume() { return std::move(m_pending->m_value); }

private:
    std::shared_ptr<PendingValue<T>> m_pending;
};

} // namespace tulvane
