#pragma once

#include <ports/KeyboardGrab.h>

namespace tulvane {

/// By an active grab of the keyboard on the windows' own connection, so that the keys arrive as the window's
/// always do. While it lasts no other program's key grabs come into force; the server ends it with the
/// window's disappearance and with the program's end. None where the windows are not on X11.
class X11KeyboardGrab final : public KeyboardGrab {
public:
    [[nodiscard]] std::unique_ptr<Hold> hold(QWindow& window) override;
};

} // namespace tulvane
