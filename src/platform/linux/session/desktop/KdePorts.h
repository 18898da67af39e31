#pragma once

#include <platform/linux/session/desktop/DesktopParts.h>
#include <ports/OpenDesktop.h>

namespace tulvane {

/// Puts into the desktop what a session of KDE has. What it lacks is left for null ports.
[[nodiscard]] Result<void, Obstacle> fillWithKdePorts(Desktop& desktop, const DesktopOptions& options,
                                                      const DesktopParts& parts);

} // namespace tulvane
