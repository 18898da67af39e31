#pragma once

#include <platform/linux/x11/keyboard/KeyboardLayout.h>

#include <ports/PasteChord.h>

namespace tulvane {

/// The way in which a paste reaches the program in front at one moment. Main thread.
struct PasteRoute {
    PasteChord chord = PasteChord::controlV;
    PasteSelection selection = PasteSelection::clipboard;

    /// By the window in front, and by whether the layout has a V at all: without one, Shift+Insert pastes,
    /// from the clipboard in most programs and from the text selected last in terminals.
    [[nodiscard]] static PasteRoute current(X11Connection& link, const TerminalTable& terminals);
};

} // namespace tulvane
