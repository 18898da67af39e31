#include <platform/linux/x11/connection/ServerGrab.h>
#include <platform/linux/x11/keyboard/KeyStroke.h>
#include <platform/linux/x11/keyboard/OwnStrokes.h>

#include <xcb/xtest.h>
#include <xkbcommon/xkbcommon-keysyms.h>

#include <algorithm>
#include <array>
#include <ranges>

namespace tulvane {

namespace {

/// A finger that comes and goes more often than this in a millisecond is none.
constexpr int roundsOfHolding = 8;

/// A key that has this letter and is not held down already, so that it can be pressed.
std::optional<xcb_keycode_t> freeKey(const KeyboardLayout& layout, const KeyboardState& state,
                                     const std::array<xkb_keysym_t, 2>& letters)
{
    for (const xkb_keysym_t letter : letters) {
        const auto place = layout.find(letter, 0);
        if (place && !state.down.contains(place->key))
            return place->key;
    }
    return std::nullopt;
}

std::array<xkb_keysym_t, 2> bothSides(xkb_keysym_t left)
{
    // The right one's number follows the left one's, of these four modifiers.
    static_assert(XKB_KEY_Shift_R == XKB_KEY_Shift_L + 1 && XKB_KEY_Control_R == XKB_KEY_Control_L + 1 &&
                  XKB_KEY_Alt_R == XKB_KEY_Alt_L + 1 && XKB_KEY_Super_R == XKB_KEY_Super_L + 1);
    return {left, left + 1};
}

bool holds(const QList<HeldKey>& keys, xcb_keycode_t code)
{
    return std::ranges::find(keys, code, &HeldKey::code) != keys.end();
}

} // namespace

bool KeyStroke::post(const KeyChord& chord, const std::function<bool()>& isWanted)
{
    readDevices();
    if (!m_layout || chord.key == XKB_KEY_NoSymbol)
        return false;
    const ServerGrab alone(m_link);
    if (!isWanted())
        return false;
    letGo();
    const KeyboardState state = KeyboardState::current(m_link);
    const auto place = m_layout->find(chord.key, state.group);
    if (place)
        send(*place, chord.modifiers, state);
    return place.has_value();
}

void KeyStroke::readDevices()
{
    m_devices = KeyboardDevices::current(m_link);
    m_layout = KeyboardLayout::ofDevice(m_link, m_devices.posting);
    m_usersLayouts.clear();
    for (const HeldKey& key : heldKeys(m_link, m_devices.users)) {
        if (m_usersLayouts.contains(key.device))
            continue;
        if (auto layout = KeyboardLayout::ofDevice(m_link, key.device))
            m_usersLayouts.insert(key.device, std::move(*layout));
    }
}

void KeyStroke::letGo()
{
    // What fingers hold is read before what programs see of it: a finger that lets go in between makes no key
    // look like one that is to be let go.
    const QList<HeldKey> fingers = heldKeys(m_link, m_devices.users);
    const QList<xcb_keycode_t> down = KeyboardState::current(m_link).down;
    for (const HeldKey& posted : heldKeys(m_link, m_devices.postingDevices())) {
        if (!down.contains(posted.code) && !holds(fingers, posted.code))
            key(posted.code, false);
    }
    m_inFingersStead.removeIf([&](xcb_keycode_t code) { return !holds(fingers, code); });
    m_link.flush();
}

QList<KeyStroke::InTheWay> KeyStroke::inTheWay(const KeyboardState& state) const
{
    const QList<HeldKey> fingers = heldKeys(m_link, m_devices.users);
    const QList<HeldKey> posted = heldKeys(m_link, m_devices.postingDevices());
    QList<InTheWay> keys;
    for (const xcb_keycode_t code : state.down) {
        if (const auto key = inTheWay(code, fingers, posted))
            keys.append(*key);
    }
    return keys;
}

std::optional<KeyStroke::InTheWay> KeyStroke::inTheWay(xcb_keycode_t code, const QList<HeldKey>& fingers,
                                                       const QList<HeldKey>& posted) const
{
    const auto finger = std::ranges::find(fingers, code, &HeldKey::code);
    const bool isFingers = finger != fingers.end();
    const KeyboardLayout layout = isFingers ? m_usersLayouts.value(finger->device, *m_layout) : *m_layout;
    if (!layout.isHeldModifier(code))
        return std::nullopt;
    // What was pressed in a finger's stead is the finger's, though that may have gone meanwhile. Where the
    // server does not tell of devices, all is taken to be a program's.
    const bool isPrograms =
        m_devices.users.isEmpty() || (!isFingers && holds(posted, code) && !m_inFingersStead.contains(code));
    Holder holder = isPrograms ? Holder::program : Holder::finger;
    if (!isPrograms && layout.letterOf(code) != m_layout->letterOf(code))
        holder = Holder::none;
    return InTheWay{code, holder, layout.actsAlone(code)};
}

void KeyStroke::send(const KeyPlace& place, const QList<xkb_keysym_t>& modifiers, const KeyboardState& state)
{
    const bool otherGroup = place.group != state.group;
    if (otherGroup)
        KeyboardState::lockGroup(m_link, place.group);
    if (state.lockedModifiers != 0)
        KeyboardState::lockModifiers(m_link, state.lockedModifiers, false);
    sendAmong(place.key, modifiers, state);
    if (state.lockedModifiers != 0)
        KeyboardState::lockModifiers(m_link, state.lockedModifiers, true);
    if (otherGroup)
        KeyboardState::lockGroup(m_link, state.lockedGroup);
}

void KeyStroke::sendAmong(xcb_keycode_t code, const QList<xkb_keysym_t>& modifiers,
                          const KeyboardState& state)
{
    QList<xcb_keycode_t> own;
    for (const xkb_keysym_t modifier : modifiers) {
        if (const auto free = freeKey(*m_layout, state, bothSides(modifier)))
            own.append(*free);
    }
    const QList<InTheWay> others = inTheWay(state);
    // Alt or Super that goes up with no other key in between opens a menu or an overview. A modifier pressed
    // around it is that other key: one of the stroke's own, or else Ctrl, which does nothing by itself.
    const bool bare = own.isEmpty() && std::ranges::any_of(others, &InTheWay::actsAlone);
    // No key has the code 0.
    const xcb_keycode_t mask =
        bare ? freeKey(*m_layout, state, bothSides(XKB_KEY_Control_L)).value_or(0) : xcb_keycode_t{0};

    for (const xcb_keycode_t one : std::as_const(own))
        key(one, true);
    if (mask != 0)
        tap(mask);
    for (const InTheWay& other : others)
        key(other.code, false);
    tap(code);
    if (mask != 0)
        key(mask, true);
    holdAgain(others);
    if (mask != 0)
        key(mask, false);
    for (const xcb_keycode_t one : own | std::views::reverse)
        key(one, false);
    m_link.flush();
}

void KeyStroke::holdAgain(const QList<InTheWay>& others)
{
    int rounds = others.isEmpty() ? 0 : roundsOfHolding;
    while (rounds > 0 && !holdAgainOnce(others))
        --rounds;
}

bool KeyStroke::holdAgainOnce(const QList<InTheWay>& others)
{
    const QList<HeldKey> fingers = heldKeys(m_link, m_devices.users);
    const QList<xcb_keycode_t> down = KeyboardState::current(m_link).down;
    bool wasRight = true;
    for (const InTheWay& other : others) {
        const bool isHeld = other.holder == Holder::program || holds(fingers, other.code);
        if (other.holder == Holder::none || isHeld == down.contains(other.code))
            continue;
        key(other.code, isHeld);
        if (isHeld && other.holder == Holder::finger)
            m_inFingersStead.append(other.code);
        wasRight = false;
    }
    return wasRight;
}

void KeyStroke::key(xcb_keycode_t code, bool down)
{
    if (!down)
        m_inFingersStead.removeAll(code);
    OwnStrokes::ofThisProcess().add(code, down);
    xcb_test_fake_input(m_link.connection(), down ? XCB_KEY_PRESS : XCB_KEY_RELEASE, code, XCB_CURRENT_TIME,
                        noWindow, 0, 0, 0);
}

void KeyStroke::tap(xcb_keycode_t code)
{
    key(code, true);
    key(code, false);
}

} // namespace tulvane
