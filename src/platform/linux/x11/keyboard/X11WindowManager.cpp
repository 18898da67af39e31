#include <platform/linux/x11/keyboard/X11WindowManager.h>

namespace tulvane {

namespace {

XcbReply<xcb_get_property_reply_t> property(X11Connection& connection, xcb_window_t window,
                                            const QString& name)
{
    constexpr quint32 longest = 256;
    return xcbReply(connection.connection(), xcb_get_property_reply,
                    xcb_get_property(connection.connection(), 0, window, connection.atom(name),
                                     XCB_GET_PROPERTY_TYPE_ANY, 0, longest));
}

} // namespace

QString windowManagerName(X11Connection& connection)
{
    QString name;
    const auto check = property(connection, connection.root(), QStringLiteral("_NET_SUPPORTING_WM_CHECK"));
    if (check && check->format == 32 && xcb_get_property_value_length(check.get()) == 4) {
        const auto window = *static_cast<const xcb_window_t*>(xcb_get_property_value(check.get()));
        if (const auto title = property(connection, window, QStringLiteral("_NET_WM_NAME")))
            name = QString::fromUtf8(static_cast<const char*>(xcb_get_property_value(title.get())),
                                     xcb_get_property_value_length(title.get()));
    }
    return name;
}

} // namespace tulvane
