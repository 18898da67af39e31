#pragma once

#include <ports/OpenDesktop.h>

namespace tulvane {

/// Puts into the desktop what an X11 session has. Fails where the server lacks what the program needs.
[[nodiscard]] Result<void, Obstacle> fillWithX11Ports(Desktop& desktop, const DesktopOptions& options,
                                                      Scheduler& scheduler);
/// Likewise in a Wayland session, whose X server shows windows and shares the clipboard, but keeps the keys
/// of other programs from us.
[[nodiscard]] Result<void, Obstacle> fillWithXWaylandPorts(Desktop& desktop, const DesktopOptions& options,
                                                           Scheduler& scheduler);

} // namespace tulvane
