#include <base/async/AsyncEvent.h>

#include <utility>

namespace tulvane {

void AsyncEvent::notifyAll()
{
    // From a list of its own: a resumed coroutine may wait again, or destroy this event.
    const auto waiters = std::exchange(m_waiters, {});
    for (const std::coroutine_handle<> waiter : waiters)
        waiter.resume();
}

} // namespace tulvane
