#pragma once

#include <platform/linux/x11/connection/X11Connection.h>

#include <QList>

namespace tulvane {

/// What is pressed and locked on the keyboard at one moment. Main thread.
struct KeyboardState {
    QList<xcb_keycode_t> down;
    std::uint8_t group = 0;       ///< the layout that the next key would have
    std::uint8_t lockedGroup = 0; ///< the part of it that stays
    /// Modifiers that hold without a key: of sticky keys, for instance. The locks that a user sets on
    /// purpose, Caps Lock and Num Lock, are not among them.
    std::uint8_t lockedModifiers = 0;

    [[nodiscard]] static KeyboardState current(X11Connection& link);

    /// Makes the next keys come from this layout.
    static void lockGroup(X11Connection& link, std::uint8_t group);
    /// Sets or ends the hold of these modifiers.
    static void lockModifiers(X11Connection& link, std::uint8_t modifiers, bool locked);
};

} // namespace tulvane
