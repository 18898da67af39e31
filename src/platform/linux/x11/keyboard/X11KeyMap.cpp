#include <platform/linux/layout/KeysymText.h>
#include <platform/linux/x11/connection/XkbProtocol.h>
#include <platform/linux/x11/keyboard/X11KeyMap.h>

#include <xkbcommon/xkbcommon-keysyms.h>
#include <xkbcommon/xkbcommon.h>

#include <utility>

namespace tulvane {

std::unique_ptr<X11KeyMap> X11KeyMap::load(X11Connection& connection)
{
    if (!connection.keyboardEvent())
        return nullptr;
    // Changes are asked for first: one that comes in between is then read twice rather than missed.
    selectChanges(connection);
    auto layout = KeyboardLayout::current(connection);
    return layout ? std::unique_ptr<X11KeyMap>(new X11KeyMap(connection, std::move(*layout))) : nullptr;
}

X11KeyMap::X11KeyMap(X11Connection& connection, KeyboardLayout layout)
    : m_connection(connection),
      m_layout(std::move(layout)),
      m_facts(facts())
{
}

void X11KeyMap::selectChanges(X11Connection& connection)
{
    constexpr quint16 events = XCB_XKB_EVENT_TYPE_NEW_KEYBOARD_NOTIFY | XCB_XKB_EVENT_TYPE_MAP_NOTIFY;
    constexpr quint16 parts = XCB_XKB_MAP_PART_KEY_TYPES | XCB_XKB_MAP_PART_KEY_SYMS |
                              XCB_XKB_MAP_PART_MODIFIER_MAP | XCB_XKB_MAP_PART_VIRTUAL_MODS |
                              XCB_XKB_MAP_PART_VIRTUAL_MOD_MAP;
    xcb_xkb_select_events(connection.connection(), XCB_XKB_ID_USE_CORE_KBD, events, 0, events, parts, parts,
                          nullptr);
}

bool X11KeyMap::isChange(const xcb_generic_event_t& event) const
{
    if (event.response_type == XCB_MAPPING_NOTIFY)
        return true;
    // Every XKB event has one number, and says in its second byte which it is.
    return event.response_type == m_connection.keyboardEvent() &&
           (event.pad0 == XCB_XKB_NEW_KEYBOARD_NOTIFY || event.pad0 == XCB_XKB_MAP_NOTIFY);
}

bool X11KeyMap::reload()
{
    auto layout = KeyboardLayout::current(m_connection);
    if (!layout)
        return false;
    m_layout = std::move(*layout);
    const Facts before = std::exchange(m_facts, facts());
    return m_facts != before;
}

X11KeyMap::Facts X11KeyMap::facts() const
{
    Facts facts;
    for (const VirtualKey& key : virtualKeys::all) {
        const auto keycode = m_layout.keycode(key);
        if (!keycode)
            continue;
        facts.keycodes.insert(key.code, *keycode);
        if (key.kind == KeyKind::printing)
            facts.labels.insert(key.code, characterOfKeysym(m_layout.keysym(*keycode, 0, 0)));
    }
    facts.modifiers = X11Modifiers::read(m_connection, m_layout);
    return facts;
}

std::optional<xcb_keycode_t> X11KeyMap::keycode(quint32 virtualKey) const
{
    const auto found = m_facts.keycodes.constFind(virtualKey);
    return found == m_facts.keycodes.cend() ? std::nullopt : std::optional(*found);
}

std::optional<quint32> X11KeyMap::virtualKey(quint32 keycode) const
{
    for (auto key = m_facts.keycodes.cbegin(); key != m_facts.keycodes.cend(); ++key) {
        if (key.value() == keycode)
            return key.key();
    }
    return std::nullopt;
}

std::optional<quint32> X11KeyMap::keyForKeysym(const QString& name) const
{
    const xkb_keysym_t wanted = keysymNamed(name);
    if (wanted == XKB_KEY_NoSymbol)
        return std::nullopt;
    constexpr xkb_level_index_t plainAndShifted = 2;
    for (xkb_layout_index_t group = 0; group < m_layout.groups(); ++group) {
        for (xkb_level_index_t level = 0; level < plainAndShifted; ++level) {
            for (const VirtualKey& key : virtualKeys::all) {
                const auto code = keycode(key.code);
                if (code && m_layout.keysym(*code, group, level) == wanted)
                    return key.code;
            }
        }
    }
    return std::nullopt;
}

} // namespace tulvane
