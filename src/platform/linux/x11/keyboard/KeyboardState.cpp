#include <platform/linux/x11/connection/XkbProtocol.h>
#include <platform/linux/x11/keyboard/KeyboardState.h>

#include <limits>

namespace tulvane {

namespace {

constexpr std::uint16_t coreKeyboard = XCB_XKB_ID_USE_CORE_KBD;
// Num Lock is Mod2 and Lock is Caps Lock on every keyboard that follows the usual rules.
constexpr unsigned momentaryModifiers =
    XCB_MOD_MASK_SHIFT | XCB_MOD_MASK_CONTROL | XCB_MOD_MASK_1 | XCB_MOD_MASK_4 | XCB_MOD_MASK_5;

} // namespace

KeyboardState KeyboardState::current(X11Connection& link)
{
    xcb_connection_t* const connection = link.connection();
    const auto keymapCookie = xcb_query_keymap(connection);
    const auto stateCookie = xcb_xkb_get_state(connection, coreKeyboard);
    KeyboardState state;
    if (const XcbReply<xcb_query_keymap_reply_t> keys{
            xcb_query_keymap_reply(connection, keymapCookie, nullptr)}) {
        for (unsigned key = 8; key <= std::numeric_limits<xcb_keycode_t>::max(); ++key) {
            if ((keys->keys[key / 8] >> (key % 8) & 1U) != 0)
                state.down.append(static_cast<xcb_keycode_t>(key));
        }
    }
    if (const XcbReply<xcb_xkb_get_state_reply_t> xkb{
            xcb_xkb_get_state_reply(connection, stateCookie, nullptr)}) {
        state.group = xkb->group;
        state.lockedGroup = xkb->lockedGroup;
        state.lockedModifiers =
            static_cast<std::uint8_t>((xkb->lockedMods | xkb->latchedMods) & momentaryModifiers);
    }
    return state;
}

void KeyboardState::lockGroup(X11Connection& link, std::uint8_t group)
{
    xcb_xkb_latch_lock_state(link.connection(), coreKeyboard, 0, 0, 1, group, 0, 0, 0);
}

void KeyboardState::lockModifiers(X11Connection& link, std::uint8_t modifiers, bool locked)
{
    const std::uint8_t locks = locked ? modifiers : std::uint8_t{0};
    xcb_xkb_latch_lock_state(link.connection(), coreKeyboard, modifiers, locks, 0, 0, modifiers, 0, 0);
}

} // namespace tulvane
