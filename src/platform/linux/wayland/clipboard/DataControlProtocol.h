#pragma once

#include <platform/linux/wayland/connection/WaylandConnection.h>

#include <wlr-data-control-unstable-v1-client.h>

namespace tulvane {

/// The interface under which a program without a window gets at the selections. There are two of them, the
/// same but for their names; the calls that were made of the older one's description serve both. Where a
/// compositor offers both, the newer one alone is used: it has the text selected last in every version.
struct DataControlProtocol final {
    /// The compositor's manager; null where it offers neither. `hasPrimary`: the text selected last, too.
    struct Manager {
        zwlr_data_control_manager_v1* object = nullptr;
        bool hasPrimary = false;
    };

    [[nodiscard]] static bool isOffered(const WaylandConnection& connection);
    /// Of the connection, which it must not outlive.
    [[nodiscard]] static Manager bind(WaylandConnection& connection);
};

} // namespace tulvane
