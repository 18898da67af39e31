#pragma once

#include <ports/ScreenLock.h>

#include <memory>
#include <utility>

namespace tulvane {

/// Locked where either says so. Main thread.
class JoinedScreenLock final : public ScreenLock {
public:
    JoinedScreenLock(std::shared_ptr<ScreenLock> one, std::shared_ptr<ScreenLock> other)
        : m_one(std::move(one)),
          m_other(std::move(other)),
          m_wasLocked(isLocked())
    {
        m_one->setChangeHandler([this](bool) { update(); });
        m_other->setChangeHandler([this](bool) { update(); });
    }
    JoinedScreenLock(const JoinedScreenLock&) = delete;
    JoinedScreenLock& operator=(const JoinedScreenLock&) = delete;
    ~JoinedScreenLock() override
    {
        m_one->setChangeHandler({});
        m_other->setChangeHandler({});
    }

    [[nodiscard]] bool isLocked() const override { return m_one->isLocked() || m_other->isLocked(); }
    void setChangeHandler(std::function<void(bool locked)> handler) override
    {
        m_handler = std::move(handler);
    }

private:
    void update()
    {
        const bool locked = isLocked();
        if (std::exchange(m_wasLocked, locked) == locked || !m_handler)
            return;
        const auto handler = m_handler; // it may set another
        handler(locked);
    }

    std::shared_ptr<ScreenLock> m_one;
    std::shared_ptr<ScreenLock> m_other;
    bool m_wasLocked;
    std::function<void(bool)> m_handler;
};

} // namespace tulvane
