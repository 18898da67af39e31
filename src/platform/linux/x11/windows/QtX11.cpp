#include <platform/linux/x11/windows/QtX11.h>

#include <QByteArray>
#include <QGuiApplication>
#include <QHash>
#include <QWindow>

#include <cstdlib>
#include <memory>

namespace tulvane::qtx11 {

namespace {

struct Freed {
    void operator()(void* memory) const { std::free(memory); } // NOLINT(cppcoreguidelines-no-malloc)
};
template <class T>
using Reply = std::unique_ptr<T, Freed>;

constexpr quint32 longest = 256;

} // namespace

xcb_connection_t* connection()
{
    const auto* const x11 = qGuiApp ? qGuiApp->nativeInterface<QNativeInterface::QX11Application>() : nullptr;
    return x11 ? x11->connection() : nullptr;
}

xcb_atom_t atom(const char* name)
{
    static QHash<QByteArray, xcb_atom_t> known;
    const QByteArray key(name);
    if (const auto found = known.constFind(key); found != known.cend())
        return *found;
    xcb_connection_t* const server = connection();
    if (!server)
        return 0;
    const auto cookie = xcb_intern_atom(server, 0, static_cast<quint16>(key.size()), name);
    const Reply<xcb_intern_atom_reply_t> reply(xcb_intern_atom_reply(server, cookie, nullptr));
    return reply ? known.insert(key, reply->atom).value() : 0;
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
    const auto cookie = xcb_get_geometry(connection(), id);
    const Reply<xcb_get_geometry_reply_t> reply(xcb_get_geometry_reply(connection(), cookie, nullptr));
    return reply ? reply->root : 0;
}

void setProperty(xcb_window_t window, const char* name, xcb_atom_t type, const QList<quint32>& items)
{
    xcb_change_property(connection(), XCB_PROP_MODE_REPLACE, window, atom(name), type, 32,
                        static_cast<quint32>(items.size()), items.constData());
}

QList<quint32> property(xcb_window_t window, const char* name, xcb_atom_t type)
{
    const auto cookie = xcb_get_property(connection(), 0, window, atom(name), type, 0, longest);
    const Reply<xcb_get_property_reply_t> reply(xcb_get_property_reply(connection(), cookie, nullptr));
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
    xcb_connection_t* const server = connection();
    if (!server)
        return;
    // The server answers in the order in which it is asked.
    const Reply<xcb_get_input_focus_reply_t> done(
        xcb_get_input_focus_reply(server, xcb_get_input_focus(server), nullptr));
}

} // namespace tulvane::qtx11
