#include <platform/linux/layout/KeysymText.h>
#include <platform/linux/layout/XkbKeymap.h>
#include <ports/KeyModifiers.h>

#include <xkbcommon/xkbcommon.h>

#include <array>

namespace tulvane {

namespace {

// Keymaps count keys from 8, and the kernel from 0.
constexpr quint32 evdevOffset = 8;

using Context = std::unique_ptr<xkb_context, decltype(&xkb_context_unref)>;

Context makeContext()
{
    return {xkb_context_new(XKB_CONTEXT_NO_FLAGS), &xkb_context_unref};
}

} // namespace

XkbKeymap::XkbKeymap(xkb_keymap* keymap) : m_keymap(keymap, &xkb_keymap_unref) {}

std::optional<XkbKeymap> XkbKeymap::fromNames(const QString& layout, const QString& variant)
{
    const Context context = makeContext();
    if (!context)
        return std::nullopt;
    const QByteArray layoutName = layout.toUtf8();
    const QByteArray variantName = variant.toUtf8();
    xkb_rule_names names{};
    names.layout = layoutName.isEmpty() ? nullptr : layoutName.constData();
    names.variant = variantName.isEmpty() ? nullptr : variantName.constData();
    xkb_keymap* const keymap = xkb_keymap_new_from_names(context.get(), &names, XKB_KEYMAP_COMPILE_NO_FLAGS);
    return keymap == nullptr ? std::nullopt : std::optional(XkbKeymap(keymap));
}

std::optional<XkbKeymap> XkbKeymap::fromText(const QByteArray& text)
{
    const Context context = makeContext();
    xkb_keymap* const keymap =
        context ? xkb_keymap_new_from_string(context.get(), text.constData(), XKB_KEYMAP_FORMAT_TEXT_V1,
                                             XKB_KEYMAP_COMPILE_NO_FLAGS)
                : nullptr;
    return keymap == nullptr ? std::nullopt : std::optional(XkbKeymap(keymap));
}

quint32 XkbKeymap::keysym(const VirtualKey& key, quint32 group, quint32 level) const
{
    const xkb_keysym_t* symbols = nullptr;
    const int count =
        xkb_keymap_key_get_syms_by_level(m_keymap.get(), key.evdev + evdevOffset, group, level, &symbols);
    return count == 1 ? *symbols : XKB_KEY_NoSymbol;
}

QString XkbKeymap::label(const VirtualKey& key) const
{
    return characterOfKeysym(keysym(key, 0, 0));
}

char32_t XkbKeymap::character(const VirtualKey& key, bool withShift) const
{
    return xkb_keysym_to_utf32(keysym(key, 0, withShift ? 1 : 0));
}

std::optional<quint32> XkbKeymap::keyForKeysym(const QString& name) const
{
    const quint32 wanted = keysymNamed(name);
    if (wanted == XKB_KEY_NoSymbol)
        return std::nullopt;
    constexpr quint32 plainAndShifted = 2;
    for (quint32 group = 0; group < xkb_keymap_num_layouts(m_keymap.get()); ++group) {
        for (quint32 level = 0; level < plainAndShifted; ++level) {
            for (const VirtualKey& key : virtualKeys::all) {
                if (keysym(key, group, level) == wanted)
                    return key.code;
            }
        }
    }
    return std::nullopt;
}

QString XkbKeymap::keysymName(const VirtualKey& key) const
{
    constexpr std::size_t longestName = 64;
    std::array<char, longestName> name{};
    const quint32 symbol = keysym(key, 0, 0);
    if (symbol == XKB_KEY_NoSymbol || xkb_keysym_get_name(symbol, name.data(), name.size()) < 0)
        return {};
    return QString::fromUtf8(name.data());
}

std::optional<KeyCombination> combinationOfXkbKey(const NativeKey& key)
{
    struct Bit {
        quint32 mask;
        quint32 modifier;
    };
    // The real modifiers of every keymap that desktops make.
    constexpr std::array bits{Bit{1, carbon::shift}, Bit{4, carbon::control}, Bit{8, carbon::option},
                              Bit{64, carbon::command}};
    const VirtualKey* const known =
        key.scanCode >= evdevOffset ? virtualKeys::byEvdev(key.scanCode - evdevOffset) : nullptr;
    if (known == nullptr)
        return std::nullopt;
    KeyCombination combination{known->code, 0};
    for (const auto& [mask, modifier] : bits)
        combination.modifiers |= (key.modifiers & mask) != 0 ? modifier : 0;
    return combination;
}

} // namespace tulvane
