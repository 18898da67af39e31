#pragma once

#include <xcb/xcb.h>

#include <cstdlib>
#include <memory>

namespace tulvane {

/// Frees what the X library allocated.
struct XcbFree {
    void operator()(void* memory) const { std::free(memory); } // NOLINT: allocated by malloc
};

/// A reply or an event of the X server; null where there was an error.
template <class T>
using XcbReply = std::unique_ptr<T, XcbFree>;

/// Waits for the reply to a request: `xcbReply(connection, xcb_get_input_focus_reply,
/// xcb_get_input_focus(connection))`.
template <class Reply, class Cookie>
[[nodiscard]] XcbReply<Reply> xcbReply(xcb_connection_t* connection,
                                       Reply* (*fetch)(xcb_connection_t*, Cookie, xcb_generic_error_t**),
                                       Cookie cookie)
{
    return XcbReply<Reply>(fetch(connection, cookie, nullptr));
}

/// Waits until the server has done all that the connection has asked for: it answers in the order in which it
/// is asked.
inline void waitForServer(xcb_connection_t* connection)
{
    static_cast<void>(xcbReply(connection, xcb_get_input_focus_reply, xcb_get_input_focus(connection)));
}

} // namespace tulvane
