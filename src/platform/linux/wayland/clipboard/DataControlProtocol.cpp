#include <platform/linux/wayland/clipboard/DataControlProtocol.h>

namespace tulvane {

namespace {

constexpr auto newName = "ext_data_control_manager_v1";

/// The manager's description under the newer name. What the manager makes has no name on the wire.
const wl_interface& newInterface()
{
    static const wl_interface interface = [] {
        wl_interface renamed = zwlr_data_control_manager_v1_interface;
        renamed.name = newName;
        return renamed;
    }();
    return interface;
}

} // namespace

bool DataControlProtocol::isOffered(const WaylandConnection& connection)
{
    return connection.offers(newName) || connection.offers(zwlr_data_control_manager_v1_interface.name);
}

DataControlProtocol::Manager DataControlProtocol::bind(WaylandConnection& connection)
{
    if (auto* const manager = connection.bind<zwlr_data_control_manager_v1>(newInterface(), 1))
        return {manager, true};
    auto* const manager =
        connection.bind<zwlr_data_control_manager_v1>(zwlr_data_control_manager_v1_interface, 2);
    const bool hasPrimary = manager && zwlr_data_control_manager_v1_get_version(manager) >=
                                           ZWLR_DATA_CONTROL_DEVICE_V1_SET_PRIMARY_SELECTION_SINCE_VERSION;
    return {manager, hasPrimary};
}

} // namespace tulvane
