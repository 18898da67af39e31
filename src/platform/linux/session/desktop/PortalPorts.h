#pragma once

#include <ports/GlobalHotkeys.h>
#include <ports/OpenDesktop.h>

#include <memory>

namespace tulvane {

/// Hot keys by the desktop's portal; null where the desktop brings no program of its own for them. Asks
/// the user nothing yet.
[[nodiscard]] std::shared_ptr<GlobalHotkeys> portalHotkeys(const QProcessEnvironment& environment);

/// Has portals know the program by its name, where the session has a service manager. Before anything asks
/// one.
void introduceToPortals(const DesktopOptions& options);

} // namespace tulvane
