#include <platform/linux/x11/clipboard/FrontWindow.h>

namespace tulvane {

namespace {

xcb_window_t focusedWindow(X11Connection& link)
{
    xcb_connection_t* const connection = link.connection();
    const XcbReply<xcb_get_input_focus_reply_t> focus(
        xcb_get_input_focus_reply(connection, xcb_get_input_focus(connection), nullptr));
    if (!focus)
        return noWindow;
    if (focus->focus != XCB_INPUT_FOCUS_POINTER_ROOT)
        return focus->focus;
    // The focus follows the pointer: keys go to the window below it.
    const XcbReply<xcb_query_pointer_reply_t> pointer(
        xcb_query_pointer_reply(connection, xcb_query_pointer(connection, link.root()), nullptr));
    return pointer ? pointer->child : noWindow;
}

QStringList classesOf(X11Connection& link, xcb_window_t window)
{
    const auto cookie =
        xcb_get_property(link.connection(), 0, window, XCB_ATOM_WM_CLASS, XCB_ATOM_STRING, 0, 256);
    const XcbReply<xcb_get_property_reply_t> reply(
        xcb_get_property_reply(link.connection(), cookie, nullptr));
    if (!reply)
        return {};
    const QByteArray bytes(static_cast<const char*>(xcb_get_property_value(reply.get())),
                           xcb_get_property_value_length(reply.get()));
    QStringList classes;
    for (const QByteArray& part : bytes.split('\0')) {
        if (!part.isEmpty())
            classes.append(QString::fromUtf8(part));
    }
    return classes;
}

std::optional<quint32> processOf(X11Connection& link, xcb_window_t window)
{
    const auto cookie = xcb_get_property(link.connection(), 0, window,
                                         link.atom(QStringLiteral("_NET_WM_PID")), XCB_ATOM_CARDINAL, 0, 1);
    const XcbReply<xcb_get_property_reply_t> reply(
        xcb_get_property_reply(link.connection(), cookie, nullptr));
    if (!reply || reply->format != 32 || xcb_get_property_value_length(reply.get()) != sizeof(quint32))
        return std::nullopt;
    return *static_cast<const quint32*>(xcb_get_property_value(reply.get()));
}

xcb_window_t parentOf(X11Connection& link, xcb_window_t window)
{
    const XcbReply<xcb_query_tree_reply_t> tree(
        xcb_query_tree_reply(link.connection(), xcb_query_tree(link.connection(), window), nullptr));
    return tree ? tree->parent : noWindow;
}

/// What the window lies in, below the root.
xcb_window_t topLevelOf(X11Connection& link, xcb_window_t window)
{
    xcb_window_t top = window;
    for (xcb_window_t parent = window; parent != noWindow && parent != link.root();
         parent = parentOf(link, parent))
        top = parent;
    return top;
}

} // namespace

FrontWindow FrontWindow::current(X11Connection& link)
{
    FrontWindow front{focusedWindow(link), {}};
    for (xcb_window_t window = front.window; window != noWindow && window != link.root();
         window = parentOf(link, window)) {
        front.classes = classesOf(link, window);
        if (!front.classes.isEmpty())
            break;
    }
    return front;
}

std::optional<quint32> FrontWindow::process(X11Connection& link)
{
    for (xcb_window_t window = focusedWindow(link); window != noWindow && window != link.root();
         window = parentOf(link, window)) {
        if (const auto process = processOf(link, window))
            return process;
    }
    return std::nullopt;
}

bool FrontWindow::sameTopLevel(X11Connection& link, xcb_window_t one, xcb_window_t other)
{
    if (one == noWindow || other == noWindow)
        return false;
    return one == other || topLevelOf(link, one) == topLevelOf(link, other);
}

bool FrontWindow::sameProgram(const X11Connection& link, xcb_window_t one, xcb_window_t other)
{
    const std::uint32_t own = xcb_get_setup(link.connection())->resource_id_mask;
    return (one & ~own) == (other & ~own);
}

} // namespace tulvane
