#pragma once

#include <base/Result.h>
#include <platform/linux/x11/connection/X11Connection.h>
#include <platform/linux/x11/keyboard/X11Modifiers.h>
#include <ports/HotkeyError.h>

#include <QtGlobal>

#include <vector>

namespace tulvane {

/// A key with modifiers, in the server's own numbers.
struct X11Grab {
    xcb_keycode_t keycode = 0;
    quint16 modifiers = 0;
    std::vector<quint16> locks; ///< every state of the locks that it holds in

    [[nodiscard]] bool isSameKey(const X11Grab& other) const
    {
        return keycode == other.keycode && modifiers == other.modifiers;
    }
};

/// Takes keys from the X server for this program, on every screen and whatever the locks are at. Main thread.
class X11Grabs final {
public:
    /// `connection` outlives this object.
    explicit X11Grabs(X11Connection& connection) : m_connection(connection) {}

    /// All of it or nothing. `taken` with the server's error number where another program holds any part;
    /// one that we hold ourselves is taken, too.
    [[nodiscard]] Result<void, HotkeyError> take(const X11Grab& grab);
    void release(const X11Grab& grab);
    /// Whether another program holds any part of it; found out by trying.
    [[nodiscard]] bool isTaken(const X11Grab& grab);
    [[nodiscard]] bool holds(const X11Grab& grab) const;

private:
    /// The number of the first error; 0 where there was none, which for a connection that has ended says
    /// nothing.
    [[nodiscard]] int request(const X11Grab& grab);
    void giveBack(const X11Grab& grab);

    X11Connection& m_connection;
    std::vector<X11Grab> m_held;
};

} // namespace tulvane
