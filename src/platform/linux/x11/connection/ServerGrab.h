#pragma once

#include <platform/linux/x11/connection/X11Connection.h>

namespace tulvane {

/// While it lives, the server serves this connection alone: no other program moves the focus or posts keys
/// meanwhile. Fingers go on pressing keys. To be held for a few milliseconds, in which nothing may wait for
/// another connection, one of our own included.
class ServerGrab final {
public:
    explicit ServerGrab(X11Connection& link) : m_link(link) { xcb_grab_server(link.connection()); }
    ServerGrab(const ServerGrab&) = delete;
    ServerGrab& operator=(const ServerGrab&) = delete;
    ~ServerGrab()
    {
        xcb_ungrab_server(m_link.connection());
        m_link.flush();
    }

private:
    X11Connection& m_link;
};

} // namespace tulvane
