#include <platform/linux/wayland/keyboard/WaylandKeymap.h>
#include <ports/KeyModifiers.h>

#include <sys/mman.h>
#include <unistd.h>
#include <xkbcommon/xkbcommon.h>

#include <array>

namespace tulvane {

namespace {

constexpr quint32 evdevToXkb = 8;

xkb_keysym_t keysymNamed(const QString& name)
{
    const QList<uint> characters = name.toUcs4();
    if (characters.size() == 1)
        return xkb_utf32_to_keysym(characters.first());
    return xkb_keysym_from_name(name.toUtf8().constData(), XKB_KEYSYM_CASE_INSENSITIVE);
}

QByteArray contentOf(int file, std::uint32_t size)
{
    void* const bytes = mmap(nullptr, size, PROT_READ, MAP_PRIVATE, file, 0);
    QByteArray text;
    if (bytes != MAP_FAILED) {
        text = QByteArray(static_cast<const char*>(bytes));
        munmap(bytes, size);
    }
    close(file);
    return text;
}

QByteArray textOf(xkb_keymap* keymap)
{
    const std::unique_ptr<char, decltype(&free)> text(
        xkb_keymap_get_as_string(keymap, XKB_KEYMAP_FORMAT_TEXT_V1), &free);
    return QByteArray(text.get());
}

} // namespace

WaylandKeymap::WaylandKeymap(std::shared_ptr<WaylandConnection> connection)
    : m_connection(std::move(connection)),
      m_seat(m_connection->bind<wl_seat>(wl_seat_interface, 1)),
      m_context(xkb_context_new(XKB_CONTEXT_NO_FLAGS), xkb_context_unref),
      m_keymap(nullptr, xkb_keymap_unref)
{
    xkb_rule_names names{};
    names.layout = "us";
    m_keymap.reset(xkb_keymap_new_from_names(m_context.get(), &names, XKB_KEYMAP_COMPILE_NO_FLAGS));
    m_usText = textOf(m_keymap.get());
    if (!m_seat)
        return;
    static const wl_seat_listener events{[](void* data, wl_seat*, std::uint32_t capabilities) {
                                             static_cast<WaylandKeymap*>(data)->setCapabilities(
                                                 (capabilities & WL_SEAT_CAPABILITY_KEYBOARD) != 0);
                                         },
                                         [](void* /*data*/, wl_seat*, const char* /*name*/) {}};
    wl_seat_add_listener(m_seat, &events, this);
    // The seat, and then its keyboard.
    m_connection->catchUp();
    m_connection->catchUp();
}

WaylandKeymap::~WaylandKeymap()
{
    setCapabilities(false);
    if (m_seat)
        wl_seat_destroy(m_seat);
    m_connection->flush();
}

void WaylandKeymap::setCapabilities(bool hasKeyboard)
{
    if (hasKeyboard == (m_keyboard != nullptr))
        return;
    if (!hasKeyboard) {
        wl_keyboard_destroy(std::exchange(m_keyboard, nullptr));
        return;
    }
    static const wl_keyboard_listener events{
        [](void* data, wl_keyboard*, std::uint32_t format, std::int32_t file, std::uint32_t size) {
            if (format == WL_KEYBOARD_KEYMAP_FORMAT_XKB_V1)
                static_cast<WaylandKeymap*>(data)->setKeymap(file, size);
            else
                close(file);
        },
        [](void*, wl_keyboard*, std::uint32_t, wl_surface*, wl_array*) {},
        [](void*, wl_keyboard*, std::uint32_t, wl_surface*) {},
        [](void*, wl_keyboard*, std::uint32_t, std::uint32_t, std::uint32_t, std::uint32_t) {},
        [](void*, wl_keyboard*, std::uint32_t, std::uint32_t, std::uint32_t, std::uint32_t, std::uint32_t) {},
        [](void*, wl_keyboard*, std::int32_t, std::int32_t) {}};
    m_keyboard = wl_seat_get_keyboard(m_seat);
    wl_keyboard_add_listener(m_keyboard, &events, this);
    m_connection->flush();
}

void WaylandKeymap::setKeymap(int file, std::uint32_t size)
{
    const QByteArray text = contentOf(file, size);
    // After a key of our own virtual keyboard, the seat's keymap is that one's.
    const bool isOurs = !m_text.isEmpty() && text == m_usText;
    if (text.isEmpty() || text == m_text || isOurs)
        return;
    xkb_keymap* const keymap = xkb_keymap_new_from_string(
        m_context.get(), text.constData(), XKB_KEYMAP_FORMAT_TEXT_V1, XKB_KEYMAP_COMPILE_NO_FLAGS);
    if (!keymap)
        return;
    m_text = text;
    m_keymap.reset(keymap);
    Q_EMIT changed();
}

quint32 WaylandKeymap::codeOf(const VirtualKey& key)
{
    return key.evdev + evdevToXkb;
}

std::optional<quint32> WaylandKeymap::keyOfCode(quint32 keycode)
{
    const VirtualKey* const key = keycode > evdevToXkb ? virtualKeys::byEvdev(keycode - evdevToXkb) : nullptr;
    return key ? std::optional(key->code) : std::nullopt;
}

quint32 WaylandKeymap::keysym(quint32 keycode, quint32 layout, quint32 level) const
{
    const xkb_keysym_t* keysyms = nullptr;
    const int count = xkb_keymap_key_get_syms_by_level(m_keymap.get(), keycode, layout, level, &keysyms);
    return count == 1 ? keysyms[0] : static_cast<quint32>(XKB_KEY_NoSymbol);
}

QString WaylandKeymap::label(const VirtualKey& key) const
{
    const char32_t character = xkb_keysym_to_utf32(xkb_keysym_to_upper(keysym(codeOf(key), 0, 0)));
    return character > U' ' && QChar::isPrint(character) ? QString::fromUcs4(&character, 1) : QString();
}

std::optional<quint32> WaylandKeymap::keyForKeysym(const QString& name) const
{
    const xkb_keysym_t wanted = keysymNamed(name);
    if (wanted == XKB_KEY_NoSymbol)
        return std::nullopt;
    constexpr quint32 plainAndShifted = 2;
    for (quint32 layout = 0; layout < xkb_keymap_num_layouts(m_keymap.get()); ++layout) {
        for (quint32 level = 0; level < plainAndShifted; ++level) {
            for (const VirtualKey& key : virtualKeys::all) {
                if (keysym(codeOf(key), layout, level) == wanted)
                    return key.code;
            }
        }
    }
    return std::nullopt;
}

std::optional<KeyCombination> WaylandKeymap::combination(const NativeKey& key) const
{
    const auto code = keyOfCode(key.scanCode);
    if (!code)
        return std::nullopt;
    quint32 modifiers = 0;
    for (const auto& [name, modifier] : std::array{
             std::pair(XKB_MOD_NAME_SHIFT, carbon::shift), std::pair(XKB_MOD_NAME_CTRL, carbon::control),
             std::pair(XKB_MOD_NAME_ALT, carbon::option), std::pair(XKB_MOD_NAME_LOGO, carbon::command)}) {
        const xkb_mod_index_t index = xkb_keymap_mod_get_index(m_keymap.get(), name);
        if (index != XKB_MOD_INVALID && (key.modifiers & (1U << index)) != 0)
            modifiers |= modifier;
    }
    return KeyCombination{*code, modifiers};
}

} // namespace tulvane
