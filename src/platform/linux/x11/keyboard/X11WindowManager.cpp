#include <platform/linux/x11/keyboard/X11WindowManager.h>

#include <QByteArray>

namespace tulvane {

namespace {

xcb_atom_t atomOf(X11Connection& connection, const QByteArray& name)
{
    const auto cookie =
        xcb_intern_atom(connection.xcb(), 1, static_cast<quint16>(name.size()), name.constData());
    const XcbReply<xcb_intern_atom_reply_t> reply(xcb_intern_atom_reply(connection.xcb(), cookie, nullptr));
    return reply ? reply->atom : xcb_atom_t{XCB_ATOM_NONE};
}

XcbReply<xcb_get_property_reply_t> property(X11Connection& connection, xcb_window_t window, const char* name)
{
    constexpr quint32 longest = 256;
    const auto cookie = xcb_get_property(connection.xcb(), 0, window, atomOf(connection, name),
                                         XCB_GET_PROPERTY_TYPE_ANY, 0, longest);
    return XcbReply<xcb_get_property_reply_t>(xcb_get_property_reply(connection.xcb(), cookie, nullptr));
}

} // namespace

QString windowManagerName(X11Connection& connection)
{
    QString name;
    const auto check = property(connection, connection.roots().front(), "_NET_SUPPORTING_WM_CHECK");
    if (check && check->format == 32 && xcb_get_property_value_length(check.get()) == 4) {
        const auto window = *static_cast<const xcb_window_t*>(xcb_get_property_value(check.get()));
        if (const auto title = property(connection, window, "_NET_WM_NAME"))
            name = QString::fromUtf8(static_cast<const char*>(xcb_get_property_value(title.get())),
                                     xcb_get_property_value_length(title.get()));
    }
    connection.handleEventsSoon();
    return name;
}

} // namespace tulvane
