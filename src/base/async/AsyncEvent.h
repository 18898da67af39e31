#pragma once

#include <coroutine>
#include <vector>

namespace tulvane {

/// Something that happens again and again. Coroutines wait for the next time with `co_await event.next()`;
/// `notifyAll` resumes all that wait, at once and on its caller's stack. A coroutine checks for itself
/// whether what it waits for has come. An event that is destroyed leaves its waiters suspended for good. Main
/// thread.
class AsyncEvent final {
public:
    AsyncEvent() = default;
    AsyncEvent(const AsyncEvent&) = delete;
    AsyncEvent& operator=(const AsyncEvent&) = delete;
    ~AsyncEvent() = default;

    /// A coroutine that waits again while it is resumed waits for the following time. A resumed coroutine may
    /// destroy this event.
    void notifyAll();

    /// To be awaited at once; the event must outlive the start of the wait.
    class Next {
    public:
        explicit Next(AsyncEvent& event) : m_event(&event) {}
        [[nodiscard]] bool await_ready() const noexcept { return false; }
        void await_suspend(std::coroutine_handle<> waiter) const { m_event->m_waiters.push_back(waiter); }
        void await_resume() const noexcept {}

    private:
        AsyncEvent* m_event;
    };

    [[nodiscard]] Next next() { return Next(*this); }

private:
    std::vector<std::coroutine_handle<>> m_waiters;
};

} // namespace tulvane
