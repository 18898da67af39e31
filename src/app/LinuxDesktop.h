#pragma once

#include <app/TulvaneApp.h>

#include <functional>
#include <memory>

namespace tulvane {

class StatusItem;
class IndicatorPanel;

/// Every adapter of a Linux desktop, made from the environment. Main thread.
class LinuxDesktop final {
public:
    /// Fails, with the reason in words, where there is no X server to work on. Both arguments outlive it.
    [[nodiscard]] static Result<std::unique_ptr<LinuxDesktop>, QString> open(UserDefaults& defaults,
                                                                             Scheduler& scheduler);
    LinuxDesktop(const LinuxDesktop&) = delete;
    LinuxDesktop& operator=(const LinuxDesktop&) = delete;
    ~LinuxDesktop();

    [[nodiscard]] Desktop ports();
    /// The program's icon in the tray; made on the first call, which needs a QApplication.
    [[nodiscard]] StatusItem& statusItem();
    /// For the pill's window; needs a QGuiApplication.
    [[nodiscard]] static std::unique_ptr<IndicatorPanel> makeIndicatorPanel();
    /// `ended` is called once when the X server has gone: nothing can be done for the user then.
    void setEnded(const std::function<void()>& ended);

private:
    struct Parts;
    explicit LinuxDesktop(std::unique_ptr<Parts> parts);

    std::unique_ptr<Parts> m_parts;
};

} // namespace tulvane
