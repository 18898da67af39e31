#pragma once

#include <platform/linux/session/desktop/DesktopParts.h>
#include <ports/OpenDesktop.h>

namespace tulvane {

/// Puts into the desktop what every Linux session has.
void fillWithSharedPorts(Desktop& desktop, const DesktopOptions& options, const DesktopParts& parts);

} // namespace tulvane
