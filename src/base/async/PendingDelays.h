#pragma once

#include <base/Scheduler.h>
#include <base/async/AsyncEvent.h>

#include <chrono>
#include <memory>
#include <vector>

namespace tulvane {

/// The time limits that the coroutines of one owner wait under, so that all of them can be cut short
/// together. Main thread.
class PendingDelays final {
public:
    /// Over once its time has passed, or once the delays were cut short.
    class Limit {
    public:
        [[nodiscard]] bool isOver() const { return m_over; }

    private:
        friend class PendingDelays;
        bool m_over = false;
        std::unique_ptr<Scheduler::Token> m_token;
    };

    /// The scheduler outlives this object.
    explicit PendingDelays(Scheduler& scheduler) : m_scheduler(scheduler) {}

    /// Starts a limit, whose end resumes all that wait for `next`. Dropping the limit cancels it.
    [[nodiscard]] std::shared_ptr<Limit> limit(std::chrono::milliseconds duration);

    /// Ends every pending limit now, and resumes all that wait.
    void cutShort();

    /// Resumes all that wait, because something has happened that they may wait for.
    void notifyAll() { m_event.notifyAll(); }

    /// To be awaited: resumes when any limit ends or `notifyAll` is called.
    [[nodiscard]] AsyncEvent::Next next() { return m_event.next(); }

private:
    Scheduler& m_scheduler;
    AsyncEvent m_event;
    std::vector<std::weak_ptr<Limit>> m_limits;
};

} // namespace tulvane
