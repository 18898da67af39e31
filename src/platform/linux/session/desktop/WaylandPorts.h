#pragma once

#include <platform/linux/session/desktop/WaylandText.h>
#include <ports/OpenDesktop.h>

#include <memory>

namespace tulvane {

/// Puts into the desktop what every Wayland session has on whose compositor Qt's own windows are: the text's
/// way into other programs, where there is one, and what shows the program.
void fillWithWaylandText(Desktop& desktop, const std::shared_ptr<WaylandText>& text,
                         const std::shared_ptr<FrontPrograms>& front);
void fillWithWaylandWindows(Desktop& desktop, const DesktopOptions& options,
                            const std::shared_ptr<WaylandConnection>& connection);

/// Why nothing can be done in a session whose compositor has gone since it was asked what it offers.
[[nodiscard]] Obstacle compositorGone();

} // namespace tulvane
