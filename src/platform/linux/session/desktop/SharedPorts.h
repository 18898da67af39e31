#pragma once

#include <ports/OpenDesktop.h>

namespace tulvane {

/// Puts into the desktop what every Linux session has.
void fillWithSharedPorts(Desktop& desktop, const DesktopOptions& options);

} // namespace tulvane
