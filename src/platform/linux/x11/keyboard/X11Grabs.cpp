#include <platform/linux/x11/keyboard/X11Grabs.h>

#include <algorithm>

namespace tulvane {

Result<void, HotkeyError> X11Grabs::take(const X11Grab& grab)
{
    // The server would let one client grab a key twice, and forget both at the first release.
    const int error = holds(grab) ? XCB_ACCESS : request(grab);
    if (m_connection.isBroken())
        return failure(HotkeyError::unreachable());
    if (error == XCB_ACCESS)
        return failure(HotkeyError::taken(error));
    if (error != 0)
        return failure(HotkeyError::refused(error));
    m_held.push_back(grab);
    return {};
}

void X11Grabs::release(const X11Grab& grab)
{
    const auto removed = std::erase_if(m_held, [&](const X11Grab& held) { return held.isSameKey(grab); });
    if (removed != 0 && !m_connection.isBroken())
        giveBack(grab);
}

bool X11Grabs::isTaken(const X11Grab& grab)
{
    if (holds(grab))
        return false;
    const auto taken = take(grab);
    release(grab);
    return !taken && taken.error().kind() == HotkeyError::Kind::taken;
}

bool X11Grabs::holds(const X11Grab& grab) const
{
    return std::ranges::any_of(m_held, [&](const X11Grab& held) { return held.isSameKey(grab); });
}

int X11Grabs::request(const X11Grab& grab)
{
    // All requests go out before the first answer is waited for: one round trip, however many there are.
    std::vector<xcb_void_cookie_t> cookies;
    for (const xcb_window_t root : m_connection.roots()) {
        for (const quint16 lock : grab.locks)
            cookies.push_back(xcb_grab_key_checked(m_connection.connection(), 0, root, grab.modifiers | lock,
                                                   grab.keycode, XCB_GRAB_MODE_ASYNC, XCB_GRAB_MODE_ASYNC));
    }
    int firstError = 0;
    for (const xcb_void_cookie_t cookie : cookies) {
        const XcbReply<xcb_generic_error_t> error(xcb_request_check(m_connection.connection(), cookie));
        if (error && firstError == 0)
            firstError = error->error_code;
    }
    if (firstError != 0)
        giveBack(grab); // the parts that were free; those of others stay theirs
    return firstError;
}

void X11Grabs::giveBack(const X11Grab& grab)
{
    for (const xcb_window_t root : m_connection.roots()) {
        for (const quint16 lock : grab.locks)
            xcb_ungrab_key(m_connection.connection(), grab.keycode, root, grab.modifiers | lock);
    }
    // Given back once the server has done it: another program that asks for the key after us gets it.
    waitForServer(m_connection.connection());
}

} // namespace tulvane
