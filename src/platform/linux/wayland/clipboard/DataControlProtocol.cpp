#include <platform/linux/wayland/clipboard/DataControlProtocol.h>

#include <ext-data-control-v1-client.h>

namespace tulvane {

bool DataControlProtocol::isOffered(const WaylandConnection& connection)
{
    return connection.offers(ext_data_control_manager_v1_interface.name) ||
           connection.offers(zwlr_data_control_manager_v1_interface.name);
}

DataControlProtocol::Manager DataControlProtocol::bind(WaylandConnection& connection)
{
    // What the manager makes has no name on the wire: only the manager itself is of the newer description.
    if (auto* const manager =
            connection.bind<zwlr_data_control_manager_v1>(ext_data_control_manager_v1_interface, 1))
        return {manager, true};
    auto* const manager =
        connection.bind<zwlr_data_control_manager_v1>(zwlr_data_control_manager_v1_interface, 2);
    const bool hasPrimary = manager && zwlr_data_control_manager_v1_get_version(manager) >=
                                           ZWLR_DATA_CONTROL_DEVICE_V1_SET_PRIMARY_SELECTION_SINCE_VERSION;
    return {manager, hasPrimary};
}

} // namespace tulvane
