#include <platform/linux/session/X11Abilities.h>
#include <platform/linux/x11/connection/XcbReply.h>

#include <xcb/xcb.h>
#include <xcb/xinput.h>
#include <xcb/xtest.h>

namespace tulvane {

namespace {

bool watchesKeys(xcb_connection_t* connection)
{
    const auto* const input = xcb_get_extension_data(connection, &xcb_input_id);
    if (input == nullptr || input->present == 0)
        return false;
    const auto version =
        xcbReply(connection, xcb_input_xi_query_version_reply, xcb_input_xi_query_version(connection, 2, 0));
    return version && version->major_version >= 2;
}

} // namespace

X11Abilities x11Abilities(const QByteArray& display)
{
    X11Abilities abilities;
    xcb_connection_t* const connection = xcb_connect(display.constData(), nullptr);
    abilities.displayReached = xcb_connection_has_error(connection) == 0;
    if (abilities.displayReached) {
        const auto* const test = xcb_get_extension_data(connection, &xcb_test_id);
        abilities.postsKeys = test != nullptr && test->present != 0;
        abilities.watchesKeys = watchesKeys(connection);
    }
    xcb_disconnect(connection);
    return abilities;
}

} // namespace tulvane
