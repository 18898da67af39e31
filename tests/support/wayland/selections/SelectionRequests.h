#pragma once

#include <support/wayland/selections/SelectionServer.h>

#include <ext-data-control-v1-server.h>
#include <wayland-server-protocol.h>
#include <wlr-data-control-unstable-v1-server.h>

namespace tulvane::test {

/// What clients ask of the server's objects. The two interfaces have the same requests in the same order, and
/// the same events; so the calls that were made of one's description serve both.
struct SelectionServer::Requests final {
    static const struct wl_seat_interface seat;
    static const struct ext_data_control_manager_v1_interface manager;
    static const struct ext_data_control_device_v1_interface device;
    static const struct ext_data_control_source_v1_interface source;
    static const struct ext_data_control_offer_v1_interface offer;

    static void destroy(wl_client* client, wl_resource* resource);
    static void refuse(wl_client* client, wl_resource* seat, std::uint32_t id);

    /// The object of a resource's user data; a source has a shared one, so that offers see when it has gone.
    template <class Object>
    [[nodiscard]] static Object& of(wl_resource* resource)
    {
        return *static_cast<Object*>(wl_resource_get_user_data(resource));
    }
    [[nodiscard]] static bool isOurs(wl_client* client);
    /// Whether the object is of the newer interface.
    [[nodiscard]] static bool isExt(wl_resource* resource);
};

} // namespace tulvane::test
