#pragma once

#include <memory>

class QWindow;

namespace tulvane {

/// The whole keyboard for one window of ours: also the combinations that the desktop or another program has
/// taken for itself, for a field that is to be told one of them. Main thread.
class KeyboardGrab {
public:
    /// The window has the keyboard until this is dropped, or until the window is hidden or gone.
    class Hold {
    public:
        Hold() = default;
        Hold(const Hold&) = delete;
        Hold& operator=(const Hold&) = delete;
        virtual ~Hold() = default;
    };

    KeyboardGrab() = default;
    KeyboardGrab(const KeyboardGrab&) = delete;
    KeyboardGrab& operator=(const KeyboardGrab&) = delete;
    virtual ~KeyboardGrab() = default;

    /// `window` is shown and has the focus. Null where the desktop gives no program the whole keyboard, or
    /// another program has it: the window then gets the keys that it always gets.
    [[nodiscard]] virtual std::unique_ptr<Hold> hold(QWindow& window) = 0;
};

} // namespace tulvane
