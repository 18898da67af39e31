#include <base/async/PendingDelays.h>

namespace tulvane {

std::shared_ptr<PendingDelays::Limit> PendingDelays::limit(std::chrono::milliseconds duration)
{
    std::erase_if(m_limits, [](const auto& limit) { return limit.expired(); });
    auto limit = std::make_shared<Limit>();
    limit->m_token = m_scheduler.after(duration, [this, weak = std::weak_ptr(limit)] {
        const auto held = weak.lock();
        if (!held)
            return;
        held->m_over = true;
        m_event.notifyAll();
    });
    m_limits.push_back(limit);
    return limit;
}

void PendingDelays::cutShort()
{
    for (const auto& weak : m_limits) {
        if (const auto limit = weak.lock())
            limit->m_over = true;
    }
    m_event.notifyAll();
}

} // namespace tulvane
