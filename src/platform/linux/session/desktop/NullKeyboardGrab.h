#pragma once

#include <ports/KeyboardGrab.h>

namespace tulvane {

/// Of a desktop that gives no window the whole keyboard. Main thread.
class NullKeyboardGrab final : public KeyboardGrab {
public:
    [[nodiscard]] std::unique_ptr<Hold> hold(QWindow& /*window*/) override { return nullptr; }
};

} // namespace tulvane
