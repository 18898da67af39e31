#include <platform/linux/x11/connection/XcbAtoms.h>
#include <platform/linux/x11/connection/XcbReply.h>
#include <platform/linux/x11/windows/QtX11.h>

#include <QGuiApplication>
#include <QWindow>

namespace tulvane::qtx11 {

namespace {

constexpr quint32 longest = 256;

} // namespace

xcb_connection_t* connection()
{
    const auto* const x11 = qGuiApp ? qGuiApp->nativeInterface<QNativeInterface::QX11Application>() : nullptr;
    return x11 ? x11->connection() : nullptr;
}

xcb_atom_t atom(const char* name)
{
    xcb_connection_t* const server = connection();
    if (!server)
        return 0;
    static XcbAtoms atoms(server);
    return atoms.atom(QString::fromLatin1(name));
}

xcb_window_t serverWindow(const QWindow& window)
{
    // The platform's window is asked for by its number; where there is none yet, asking would make one.
    return connection() && window.handle() ? static_cast<xcb_window_t>(window.winId()) : 0;
}

xcb_window_t root(const QWindow& window)
{
    const xcb_window_t id = serverWindow(window);
    if (id == 0)
        return 0;
    const auto reply = xcbReply(connection(), xcb_get_geometry_reply, xcb_get_geometry(connection(), id));
    return reply ? reply->root : 0;
}

void setProperty(xcb_window_t window, const char* name, xcb_atom_t type, const QList<quint32>& items)
{
    xcb_change_property(connection(), XCB_PROP_MODE_REPLACE, window, atom(name), type, 32,
                        static_cast<quint32>(items.size()), items.constData());
}

QList<quint32> property(xcb_window_t window, const char* name, xcb_atom_t type)
{
    const auto reply = xcbReply(connection(), xcb_get_property_reply,
                                xcb_get_property(connection(), 0, window, atom(name), type, 0, longest));
    if (!reply || reply->format != 32)
        return {};
    const auto* const items = static_cast<const quint32*>(xcb_get_property_value(reply.get()));
    return QList<quint32>(items, items + xcb_get_property_value_length(reply.get()) / 4);
}

void flush()
{
    if (xcb_connection_t* const server = connection())
        xcb_flush(server);
}

void finish()
{
    if (xcb_connection_t* const server = connection())
        waitForServer(server);
}

} // namespace tulvane::qtx11
