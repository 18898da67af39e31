#pragma once

#include <QString>

namespace tulvane {

/// The user's desktop session, as far as the program can tell.
struct SessionFacts {
    QString kind;    ///< "X11", "Wayland, KDE", "none"
    QString desktop; ///< as the desktop calls itself; may be empty
    QString display; ///< the name of the display that the windows are on; may be empty
    bool displayReached = false;
    bool hasAccessibilityBus = false; ///< whether other programs' fields can be asked for and written into
};

} // namespace tulvane
