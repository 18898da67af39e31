#pragma once

#include <functional>

namespace tulvane {

/// An appearance that the application insists on; `none` follows the system's own.
enum class Appearance { none, light, dark };

/// Whether the application has an entry of its own among the running programs (a Dock icon, a task-bar
/// entry), or only its item in the menu bar or tray.
enum class ActivationPolicy { regular, accessory };

/// How the application shows itself on the desktop. Main thread.
class Presentation {
public:
    Presentation() = default;
    Presentation(const Presentation&) = delete;
    Presentation& operator=(const Presentation&) = delete;
    virtual ~Presentation() = default;

    /// Applies to every window of the application, those to come included. Never fails; where the desktop
    /// has no such notion, nothing happens.
    virtual void setAppearance(Appearance appearance) = 0;
    /// What the windows are to look like now: the application's own appearance, else the system's. Never
    /// `none`.
    [[nodiscard]] virtual Appearance effectiveAppearance() const = 0;
    /// Whether the user has asked the desktop to do without animations.
    [[nodiscard]] virtual bool prefersReducedMotion() const = 0;
    /// Called after either of the two may have changed. One handler.
    virtual void setChangeHandler(std::function<void()> handler) = 0;

    /// Applies to every window, those to come included; none is closed by it.
    virtual void setActivationPolicy(ActivationPolicy policy) = 0;
};

} // namespace tulvane
