#pragma once

#include <base/Scheduler.h>
#include <base/async/AsyncEvent.h>

#include <chrono>
#include <memory>
#include <vector>

namespace tulvane {

/// The pending waits of one owner, so that all of them can be cut short together. Main thread.
class PendingDelays final {
public:
    /// Over once its time has passed, or once the waits were cut short.
    class Limit {
    public:
        [[nodiscard]] bool isOver() const { return m_over; }

    private:
        friend class PendingDelays;
        bool m_over = false;
        std::unique_ptr<Scheduler::Token> m_token;
    };

    explicit PendingDelays(Scheduler& scheduler) : m_scheduler(scheduler) {}

    /// Starts a limit; the bell rings when it is over. Dropping the limit forgets it.
    [[nodiscard]] std::shared_ptr<Limit> limit(std::chrono::milliseconds duration);

    /// Makes every pending limit over now.
    void cutShort();

    /// Something has happened that a waiter may be interested in.
    void wake() { m_bell.ring(); }

    /// To be awaited: goes on when a limit is over or something has happened, whichever limit and whatever.
    [[nodiscard]] AsyncEvent::Rings something() { return m_bell.rings(); }

private:
    Scheduler& m_scheduler;
    AsyncEvent m_bell;
    std::vector<std::weak_ptr<Limit>> m_limits;
};

} // namespace tulvane
