#pragma once

#include <coroutine>
#include <vector>

namespace tulvane {

/// Coroutines wait for it with `co_await bell.rings()`; ringing it lets all of them go on, at once and on the
/// ringer's stack. They look themselves whether what they wait for has come. Main thread.
class AsyncEvent final {
public:
    AsyncEvent() = default;
    AsyncEvent(const AsyncEvent&) = delete;
    AsyncEvent& operator=(const AsyncEvent&) = delete;
    ~AsyncEvent() = default;

    void ring();

    class Rings {
    public:
        explicit Rings(AsyncEvent& bell) : m_bell(&bell) {}
        [[nodiscard]] bool await_ready() const noexcept { return false; }
        void await_suspend(std::coroutine_handle<> waiter) const { m_bell->m_waiters.push_back(waiter); }
        void await_resume() const noexcept {}

    private:
        AsyncEvent* m_bell;
    };

    [[nodiscard]] Rings rings() { return Rings(*this); }

private:
    std::vector<std::coroutine_handle<>> m_waiters;
};

} // namespace tulvane
