#pragma once

namespace tulvane {

/// An appearance that the application insists on; `none` follows the system's own.
enum class Appearance { none, light, dark };

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
};

} // namespace tulvane
