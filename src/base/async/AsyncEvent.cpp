#include <base/async/AsyncEvent.h>

#include <utility>

namespace tulvane {

void AsyncEvent::ring()
{
    // Whoever goes on may wait again, or take the bell away.
    const auto waiters = std::exchange(m_waiters, {});
    for (const std::coroutine_handle<> waiter : waiters)
        waiter.resume();
}

} // namespace tulvane
