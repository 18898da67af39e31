#pragma once

#include <wayland-client-core.h>

namespace tulvane {

/// The functions of libwayland-client that the program uses. The library is opened when the first connection
/// is: a session without Wayland loads none of it. Any thread, once `isThere()` has said yes.
struct WaylandLibrary final {
    decltype(&wl_display_connect) displayConnect = nullptr;
    decltype(&wl_display_disconnect) displayDisconnect = nullptr;
    decltype(&wl_display_get_fd) displayGetFd = nullptr;
    decltype(&wl_display_get_error) displayGetError = nullptr;
    decltype(&wl_display_roundtrip) displayRoundtrip = nullptr;
    decltype(&wl_display_flush) displayFlush = nullptr;
    decltype(&wl_display_prepare_read) displayPrepareRead = nullptr;
    decltype(&wl_display_read_events) displayReadEvents = nullptr;
    decltype(&wl_display_dispatch_pending) displayDispatchPending = nullptr;
    decltype(&wl_proxy_marshal_flags) proxyMarshalFlags = nullptr;
    decltype(&wl_proxy_add_listener) proxyAddListener = nullptr;
    decltype(&wl_proxy_destroy) proxyDestroy = nullptr;
    decltype(&wl_proxy_get_version) proxyGetVersion = nullptr;
    decltype(&wl_proxy_set_user_data) proxySetUserData = nullptr;
    decltype(&wl_proxy_get_user_data) proxyGetUserData = nullptr;

    /// Whether the library could be opened; tries it once.
    [[nodiscard]] static bool isThere();
    /// Only where it is there.
    [[nodiscard]] static const WaylandLibrary& functions();

private:
    WaylandLibrary();

    [[nodiscard]] static const WaylandLibrary& opened();

    bool m_isComplete = false;
};

} // namespace tulvane

// What wayland-scanner makes calls these by name.
#define wl_proxy_marshal_flags tulvane::WaylandLibrary::functions().proxyMarshalFlags
#define wl_proxy_add_listener tulvane::WaylandLibrary::functions().proxyAddListener
#define wl_proxy_destroy tulvane::WaylandLibrary::functions().proxyDestroy
#define wl_proxy_get_version tulvane::WaylandLibrary::functions().proxyGetVersion
#define wl_proxy_set_user_data tulvane::WaylandLibrary::functions().proxySetUserData
#define wl_proxy_get_user_data tulvane::WaylandLibrary::functions().proxyGetUserData
#include <wayland-core-client.h>
