#pragma once

#include <ports/GlobalHotkeys.h>
#include <ports/OpenDesktop.h>

#include <memory>

namespace tulvane {

class PortalRemoteDesktop;

/// Hot keys by the desktop's portal; null where the desktop brings no program of its own for them. Asks
/// the user nothing yet.
[[nodiscard]] std::shared_ptr<GlobalHotkeys> portalHotkeys(const QProcessEnvironment& environment);

/// The portal's remote control, where nothing else presses keys and the desktop brings a program of its own
/// for it; otherwise null. Asks the user at once where that was allowed at an earlier start. After
/// `introduceToPortals`.
[[nodiscard]] std::shared_ptr<PortalRemoteDesktop> portalRemoteDesktop(const DesktopOptions& options);

/// Has portals know the program by its name, where the session has a service manager. Before anything asks
/// one.
void introduceToPortals(const DesktopOptions& options);

} // namespace tulvane
