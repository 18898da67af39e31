#pragma once

#include <platform/linux/x11/connection/X11Connection.h>

#include <QList>

#include <sys/types.h>

namespace tulvane {

/// The process behind a window, by the server's own account of its clients, and what it belongs to. A plain
/// value, of the moment at which it was asked for. Any thread that owns the link.
struct ClientProcess {
    pid_t id = 0;           ///< 0 where the server does not tell
    pid_t group = 0;        ///< its process group
    QList<pid_t> ancestors; ///< nearest first

    [[nodiscard]] static ClientProcess ofWindow(X11Connection& link, xcb_window_t window);

    /// Whether what this process does is done by that program: it is the program itself, was started by it,
    /// or is in the process group that the program leads. False where either is not known.
    [[nodiscard]] bool belongsTo(const ClientProcess& program) const;
};

} // namespace tulvane
