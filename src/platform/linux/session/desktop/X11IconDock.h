#pragma once

#include <platform/linux/desktop/shell/IconDock.h>
#include <platform/linux/x11/windows/TrayDock.h>

namespace tulvane {

/// The X11 tray, for the status item. Main thread; needs a QGuiApplication.
class X11IconDock final : public IconDock {
public:
    [[nodiscard]] bool isThere() const override { return m_dock.isThere(); }
    void setArrivalHandler(const std::function<void()>& handler) override { m_dock.onArrival = handler; }
    void setDepartureHandler(const std::function<void()>& handler) override { m_dock.onDeparture = handler; }

private:
    TrayDock m_dock;
};

} // namespace tulvane
