#pragma once

#include <functional>

namespace tulvane {

/// Whether the user's session is locked: what has the keyboard then is the locker. Main thread.
class ScreenLock {
public:
    ScreenLock() = default;
    ScreenLock(const ScreenLock&) = delete;
    ScreenLock& operator=(const ScreenLock&) = delete;
    virtual ~ScreenLock() = default;

    /// As far as the desktop has said; false while it has said nothing, and where it never does.
    [[nodiscard]] virtual bool isLocked() const = 0;
    /// Called from the event loop after each change. One handler; an empty one ends it.
    virtual void setChangeHandler(std::function<void(bool locked)> handler) = 0;
};

} // namespace tulvane
