#pragma once

#include <QList>

#include <xcb/xcb.h>

class QWindow;

namespace tulvane::qtx11 {

/// The connection that the windows themselves are on, so that what is asked for here comes after what was
/// asked of them. Null where the windows are not on X11. Main thread; never to be read for events.
[[nodiscard]] xcb_connection_t* connection();

/// Asks the server the first time. 0 where there is none.
[[nodiscard]] xcb_atom_t atom(const char* name);

/// The root of the window's screen; 0 where it has none on the server yet.
[[nodiscard]] xcb_window_t root(const QWindow& window);

/// The window on the server; 0 where it is not there yet.
[[nodiscard]] xcb_window_t serverWindow(const QWindow& window);

/// A property of 32-bit items, replaced.
void setProperty(xcb_window_t window, const char* name, xcb_atom_t type, const QList<quint32>& items);
/// A property of 32-bit items; empty where it is not set. Waits for the server.
[[nodiscard]] QList<quint32> property(xcb_window_t window, const char* name, xcb_atom_t type);

/// Sends what has been asked for: what goes past the windows' own functions otherwise waits for their next
/// need.
void flush();
/// Waits until the server has done all that has been asked for.
void finish();

} // namespace tulvane::qtx11
