#pragma once

#include <QByteArray>

namespace tulvane {

/// What an X server offers a program that works with others' keys.
struct X11Abilities {
    bool displayReached = false;
    bool postsKeys = false;   ///< has XTEST
    bool watchesKeys = false; ///< has XInput 2
};

/// Asks the server of this display, as in DISPLAY, and waits for its answers. Needs no application object.
[[nodiscard]] X11Abilities x11Abilities(const QByteArray& display);

} // namespace tulvane
