#pragma once

#include <ports/ScreenLock.h>

#include <utility>

namespace tulvane {

/// A session that the test locks and unlocks.
class FakeScreenLock final : public ScreenLock {
public:
    [[nodiscard]] bool isLocked() const override { return m_locked; }
    void setChangeHandler(std::function<void(bool locked)> handler) override
    {
        m_handler = std::move(handler);
    }

    void setLocked(bool locked)
    {
        if (std::exchange(m_locked, locked) != locked && m_handler)
            m_handler(locked);
    }

private:
    bool m_locked = false;
    std::function<void(bool locked)> m_handler;
};

} // namespace tulvane
