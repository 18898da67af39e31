#pragma once

#include <functional>

namespace tulvane {

/// A place of the window system's own into which a program docks its icon's window, for desktops without a
/// bar on the session bus. Main thread.
class IconDock {
public:
    IconDock() = default;
    IconDock(const IconDock&) = delete;
    IconDock& operator=(const IconDock&) = delete;
    virtual ~IconDock() = default;

    [[nodiscard]] virtual bool isThere() const = 0;
    /// Called when one has come. One handler.
    virtual void setArrivalHandler(const std::function<void()>& handler) = 0;
    /// Called when the one that was there has gone. One handler.
    virtual void setDepartureHandler(const std::function<void()>& handler) = 0;
};

} // namespace tulvane
