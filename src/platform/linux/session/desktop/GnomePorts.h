#pragma once

#include <platform/linux/session/desktop/DesktopParts.h>
#include <ports/OpenDesktop.h>

namespace tulvane {

/// Puts into the desktop what a Wayland session of GNOME has. Fails where its X server does not answer.
[[nodiscard]] Result<void, Obstacle> fillWithGnomePorts(Desktop& desktop, const DesktopOptions& options,
                                                        const DesktopParts& parts);

} // namespace tulvane
