#include <platform/linux/x11/keyboard/KeyboardLayout.h>

#include <xkbcommon/xkbcommon-keysyms.h>
#include <xkbcommon/xkbcommon-x11.h>

#include <algorithm>

namespace tulvane {

namespace {

// The X protocol counts keys from 8; keymaps of the Linux kernel's keyboards keep its numbers otherwise.
constexpr xkb_keycode_t evdevOffset = 8;

/// The one letter that a key has in a group without Shift; none when it has none or several.
xkb_keysym_t plainLetter(xkb_keymap* keymap, xkb_keycode_t key, xkb_layout_index_t group)
{
    const xkb_keysym_t* letters = nullptr;
    return xkb_keymap_key_get_syms_by_level(keymap, key, group, 0, &letters) == 1 ? *letters
                                                                                  : XKB_KEY_NoSymbol;
}

} // namespace

std::optional<KeyboardLayout> KeyboardLayout::current(X11Connection& link)
{
    return ofDevice(link, xkb_x11_get_core_keyboard_device_id(link.connection()));
}

std::optional<KeyboardLayout> KeyboardLayout::ofDevice(X11Connection& link, qint32 device)
{
    const std::unique_ptr<xkb_context, decltype(&xkb_context_unref)> context(
        xkb_context_new(XKB_CONTEXT_NO_DEFAULT_INCLUDES), &xkb_context_unref);
    xkb_keymap* keymap = device < 0 || !context
                             ? nullptr
                             : xkb_x11_keymap_new_from_device(context.get(), link.connection(), device,
                                                              XKB_KEYMAP_COMPILE_NO_FLAGS);
    if (keymap == nullptr)
        return std::nullopt;
    return KeyboardLayout(Keymap(keymap, &xkb_keymap_unref));
}

std::optional<KeyPlace> KeyboardLayout::find(xkb_keysym_t letter, std::uint8_t preferredGroup) const
{
    const xkb_keycode_t last = xkb_keymap_max_keycode(m_keymap.get());
    const auto inGroup = [&](xkb_layout_index_t group) -> std::optional<KeyPlace> {
        for (xkb_keycode_t key = xkb_keymap_min_keycode(m_keymap.get()); key <= last; ++key) {
            if (plainLetter(m_keymap.get(), key, group) == letter)
                return KeyPlace{static_cast<xcb_keycode_t>(key), static_cast<std::uint8_t>(group)};
        }
        return std::nullopt;
    };
    if (const auto place = inGroup(preferredGroup))
        return place;
    for (xkb_layout_index_t group = 0; group < xkb_keymap_num_layouts(m_keymap.get()); ++group) {
        if (const auto place = inGroup(group))
            return place;
    }
    return std::nullopt;
}

std::optional<xcb_keycode_t> KeyboardLayout::keycode(const VirtualKey& key) const
{
    if (*key.xkb == '\0')
        return std::nullopt;
    xkb_keycode_t code = xkb_keymap_key_by_name(m_keymap.get(), key.xkb);
    if (code == XKB_KEYCODE_INVALID) {
        code = key.evdev + evdevOffset;
        // A place that bears another name is not the one that is looked for.
        const bool isFree = code <= xkb_keymap_max_keycode(m_keymap.get()) &&
                            xkb_keymap_key_get_name(m_keymap.get(), code) == nullptr;
        if (!isFree)
            return std::nullopt;
    }
    return code > 0xFF ? std::nullopt : std::optional(static_cast<xcb_keycode_t>(code));
}

xkb_keysym_t KeyboardLayout::keysym(xcb_keycode_t key, xkb_layout_index_t group,
                                    xkb_level_index_t level) const
{
    const xkb_keysym_t* keysyms = nullptr;
    return xkb_keymap_key_get_syms_by_level(m_keymap.get(), key, group, level, &keysyms) > 0
               ? keysyms[0]
               : XKB_KEY_NoSymbol;
}

bool KeyboardLayout::hasAny(xcb_keycode_t key, std::initializer_list<xkb_keysym_t> keysyms) const
{
    for (xkb_layout_index_t group = 0; group < xkb_keymap_num_layouts_for_key(m_keymap.get(), key); ++group) {
        const xkb_keysym_t* typed = nullptr;
        const int count = xkb_keymap_key_get_syms_by_level(m_keymap.get(), key, group, 0, &typed);
        if (std::any_of(typed, typed + count,
                        [&](xkb_keysym_t one) { return std::ranges::find(keysyms, one) != keysyms.end(); }))
            return true;
    }
    return false;
}

xkb_keysym_t KeyboardLayout::letterOf(xcb_keycode_t key) const
{
    return plainLetter(m_keymap.get(), key, 0);
}

bool KeyboardLayout::isHeldModifier(xcb_keycode_t key) const
{
    switch (letterOf(key)) {
    case XKB_KEY_Shift_L:
    case XKB_KEY_Shift_R:
    case XKB_KEY_Control_L:
    case XKB_KEY_Control_R:
    case XKB_KEY_ISO_Level3_Shift:
    case XKB_KEY_ISO_Level5_Shift:
    case XKB_KEY_Mode_switch:
        return true;
    default:
        return actsAlone(key);
    }
}

bool KeyboardLayout::actsAlone(xcb_keycode_t key) const
{
    switch (letterOf(key)) {
    case XKB_KEY_Alt_L:
    case XKB_KEY_Alt_R:
    case XKB_KEY_Meta_L:
    case XKB_KEY_Meta_R:
    case XKB_KEY_Super_L:
    case XKB_KEY_Super_R:
    case XKB_KEY_Hyper_L:
    case XKB_KEY_Hyper_R:
        return true;
    default:
        return false;
    }
}

} // namespace tulvane
