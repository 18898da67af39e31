#pragma once

#include <base/Scheduler.h>

#include <memory>

namespace tulvane {

class PortalRemoteDesktop;

/// What several ports of one desktop are made with.
struct DesktopParts {
    Scheduler& scheduler; ///< outlives the desktop
    /// Where keys can be pressed by the portal alone; otherwise null.
    std::shared_ptr<PortalRemoteDesktop> remoteDesktop;
};

} // namespace tulvane
