#pragma once

#include <platform/linux/x11/connection/X11Connection.h>

#include <QStringList>

#include <optional>

namespace tulvane {

/// The window that has the keyboard focus. Main thread.
struct FrontWindow {
    xcb_window_t window = noWindow; ///< none where the focus is nowhere
    QStringList classes;            ///< both parts of WM_CLASS, of the window or of what it lies in

    [[nodiscard]] static FrontWindow current(X11Connection& link);
    /// The process that the window with the keyboard focus, or what it lies in, says it is of.
    [[nodiscard]] static std::optional<quint32> process(X11Connection& link);

    /// Whether both windows lie in one window of the desktop: a program may hand the focus from one part of
    /// it to another.
    [[nodiscard]] static bool sameTopLevel(X11Connection& link, xcb_window_t one, xcb_window_t other);
    /// Whether both windows are of one program: a program's windows share the upper part of their numbers.
    [[nodiscard]] static bool sameProgram(const X11Connection& link, xcb_window_t one, xcb_window_t other);
};

} // namespace tulvane
