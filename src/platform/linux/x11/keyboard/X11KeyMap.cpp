#include <platform/linux/x11/keyboard/X11KeyMap.h>
#include <platform/linux/x11/connection/XkbProtocol.h>

#include <xkbcommon/xkbcommon-keysyms.h>
#include <xkbcommon/xkbcommon-x11.h>
#include <xkbcommon/xkbcommon.h>

#include <array>
#include <utility>

namespace tulvane {

namespace {

// The X protocol counts keys from 8; keymaps of the Linux kernel's keyboards keep its numbers otherwise.
constexpr xkb_keycode_t evdevOffset = 8;

/// The character that a keysym shows on a key; dead keys show their accent.
QString characterOf(xkb_keysym_t keysym)
{
    constexpr std::array dead{
        std::pair{XKB_KEY_dead_grave, u'`'},      std::pair{XKB_KEY_dead_acute, u'´'},
        std::pair{XKB_KEY_dead_circumflex, u'^'}, std::pair{XKB_KEY_dead_tilde, u'~'},
        std::pair{XKB_KEY_dead_diaeresis, u'¨'},  std::pair{XKB_KEY_dead_abovering, u'˚'},
        std::pair{XKB_KEY_dead_cedilla, u'¸'},    std::pair{XKB_KEY_dead_caron, u'ˇ'}};
    for (const auto& [deadKey, accent] : dead) {
        if (keysym == static_cast<xkb_keysym_t>(deadKey))
            return QString(QChar(accent));
    }
    const char32_t character = xkb_keysym_to_utf32(xkb_keysym_to_upper(keysym));
    return character > U' ' && QChar::isPrint(character) ? QString::fromUcs4(&character, 1) : QString();
}

xkb_keysym_t keysymAt(xkb_keymap* keymap, xkb_keycode_t key, xkb_layout_index_t layout,
                      xkb_level_index_t level)
{
    const xkb_keysym_t* keysyms = nullptr;
    return xkb_keymap_key_get_syms_by_level(keymap, key, layout, level, &keysyms) > 0 ? keysyms[0]
                                                                                      : XKB_KEY_NoSymbol;
}

xkb_keysym_t keysymNamed(const QString& name)
{
    const QList<uint> characters = name.toUcs4();
    if (characters.size() == 1)
        return xkb_utf32_to_keysym(characters.first());
    const QByteArray utf8 = name.toUtf8();
    const xkb_keysym_t exact = xkb_keysym_from_name(utf8.constData(), XKB_KEYSYM_NO_FLAGS);
    return exact != XKB_KEY_NoSymbol ? exact
                                     : xkb_keysym_from_name(utf8.constData(), XKB_KEYSYM_CASE_INSENSITIVE);
}

xkb_keycode_t keycodeOf(xkb_keymap* keymap, const VirtualKey& key)
{
    if (*key.xkb == '\0')
        return XKB_KEYCODE_INVALID;
    const xkb_keycode_t named = xkb_keymap_key_by_name(keymap, key.xkb);
    if (named != XKB_KEYCODE_INVALID)
        return named;
    const xkb_keycode_t numbered = key.evdev + evdevOffset;
    // A place that bears another name is not the one that is looked for.
    const bool isFree =
        numbered <= xkb_keymap_max_keycode(keymap) && xkb_keymap_key_get_name(keymap, numbered) == nullptr;
    return isFree ? numbered : XKB_KEYCODE_INVALID;
}

} // namespace

void X11KeyMap::KeymapFreed::operator()(xkb_keymap* keymap) const
{
    xkb_keymap_unref(keymap);
}

void X11KeyMap::ContextFreed::operator()(xkb_context* context) const
{
    xkb_context_unref(context);
}

std::unique_ptr<X11KeyMap> X11KeyMap::load(X11Connection& connection)
{
    quint8 firstEvent = 0;
    const int usable = xkb_x11_setup_xkb_extension(
        connection.xcb(), XKB_X11_MIN_MAJOR_XKB_VERSION, XKB_X11_MIN_MINOR_XKB_VERSION,
        XKB_X11_SETUP_XKB_EXTENSION_NO_FLAGS, nullptr, nullptr, &firstEvent, nullptr);
    connection.handleEventsSoon();
    if (usable == 0)
        return nullptr;
    std::unique_ptr<X11KeyMap> map(new X11KeyMap(connection, firstEvent));
    // Changes are asked for first: one that comes in between is then read twice rather than missed.
    map->selectChanges();
    return map->read() ? std::move(map) : nullptr;
}

X11KeyMap::X11KeyMap(X11Connection& connection, quint8 firstEvent)
    : m_connection(connection),
      m_firstEvent(firstEvent),
      m_context(xkb_context_new(XKB_CONTEXT_NO_FLAGS))
{
}

X11KeyMap::~X11KeyMap() = default;

void X11KeyMap::selectChanges()
{
    constexpr quint16 events = XCB_XKB_EVENT_TYPE_NEW_KEYBOARD_NOTIFY | XCB_XKB_EVENT_TYPE_MAP_NOTIFY;
    constexpr quint16 parts = XCB_XKB_MAP_PART_KEY_TYPES | XCB_XKB_MAP_PART_KEY_SYMS |
                              XCB_XKB_MAP_PART_MODIFIER_MAP | XCB_XKB_MAP_PART_VIRTUAL_MODS |
                              XCB_XKB_MAP_PART_VIRTUAL_MOD_MAP;
    xcb_xkb_select_events(m_connection.xcb(), XCB_XKB_ID_USE_CORE_KBD, events, 0, events, parts, parts,
                          nullptr);
}

bool X11KeyMap::isChange(const xcb_generic_event_t& event) const
{
    const auto type = static_cast<quint8>(event.response_type & 0x7F);
    if (type == XCB_MAPPING_NOTIFY)
        return true;
    // Every XKB event has one number, and says in its second byte which it is.
    return type == m_firstEvent &&
           (event.pad0 == XCB_XKB_NEW_KEYBOARD_NOTIFY || event.pad0 == XCB_XKB_MAP_NOTIFY);
}

bool X11KeyMap::reload()
{
    const Facts before = m_facts;
    return read() && m_facts != before;
}

bool X11KeyMap::read()
{
    const qint32 device = xkb_x11_get_core_keyboard_device_id(m_connection.xcb());
    std::unique_ptr<xkb_keymap, KeymapFreed> keymap(
        device < 0 ? nullptr
                   : xkb_x11_keymap_new_from_device(m_context.get(), m_connection.xcb(), device,
                                                    XKB_KEYMAP_COMPILE_NO_FLAGS));
    m_connection.handleEventsSoon();
    if (!keymap)
        return false;
    m_keymap = std::move(keymap);
    m_facts = facts();
    return true;
}

X11KeyMap::Facts X11KeyMap::facts() const
{
    Facts facts;
    for (const VirtualKey& key : virtualKeys::all) {
        const xkb_keycode_t keycode = keycodeOf(m_keymap.get(), key);
        if (keycode > 0xFF)
            continue;
        facts.keycodes.insert(key.code, static_cast<xcb_keycode_t>(keycode));
        if (key.kind == KeyKind::printing)
            facts.labels.insert(key.code, characterOf(keysymAt(m_keymap.get(), keycode, 0, 0)));
    }
    facts.modifiers = X11Modifiers::read(m_connection, m_keymap.get());
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
    const xkb_layout_index_t layouts = xkb_keymap_num_layouts(m_keymap.get());
    for (xkb_layout_index_t layout = 0; layout < layouts; ++layout) {
        for (xkb_level_index_t level = 0; level < plainAndShifted; ++level) {
            for (const VirtualKey& key : virtualKeys::all) {
                const auto code = keycode(key.code);
                if (code && keysymAt(m_keymap.get(), *code, layout, level) == wanted)
                    return key.code;
            }
        }
    }
    return std::nullopt;
}

} // namespace tulvane
