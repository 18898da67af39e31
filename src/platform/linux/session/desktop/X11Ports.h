#pragma once

#include <platform/linux/session/desktop/DesktopParts.h>
#include <platform/linux/x11/connection/X11Connection.h>
#include <ports/OpenDesktop.h>

#include <memory>

namespace tulvane {

/// Puts into the desktop what an X11 session has. Fails where the server lacks what the program needs.
[[nodiscard]] Result<void, Obstacle> fillWithX11Ports(Desktop& desktop, const DesktopOptions& options,
                                                      const DesktopParts& parts);
/// Likewise in a Wayland session, whose X server shows windows and shares the clipboard, but keeps the keys
/// of other programs from us.
[[nodiscard]] Result<void, Obstacle> fillWithXWaylandPorts(Desktop& desktop, const DesktopOptions& options,
                                                           const DesktopParts& parts);

/// What shows the program on an X server, over this connection.
void fillWithX11Windows(Desktop& desktop, const DesktopOptions& options,
                        const std::shared_ptr<X11Connection>& connection);
/// Why nothing can be done where the X server does not do for us what it should.
[[nodiscard]] Obstacle xServerLacks(const QProcessEnvironment& environment);

} // namespace tulvane
