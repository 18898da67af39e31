#include <platform/linux/x11/keyboard/X11Modifiers.h>
#include <ports/KeyModifiers.h>

#include <xkbcommon/xkbcommon-keysyms.h>

#include <array>

namespace tulvane {

namespace {

constexpr int modifierCount = 8;
constexpr quint32 allModifiers = 0xFF;

struct Pair {
    quint32 carbon;
    quint16 mask;
};

std::array<Pair, 4> pairsOf(const X11Modifiers& modifiers)
{
    return {Pair{carbon::shift, XCB_MOD_MASK_SHIFT}, Pair{carbon::control, XCB_MOD_MASK_CONTROL},
            Pair{carbon::option, modifiers.alt}, Pair{carbon::command, modifiers.super}};
}

} // namespace

X11Modifiers X11Modifiers::read(X11Connection& connection, const KeyboardLayout& layout)
{
    X11Modifiers modifiers;
    const auto reply = xcbReply(connection.connection(), xcb_get_modifier_mapping_reply,
                                xcb_get_modifier_mapping(connection.connection()));
    if (!reply)
        return modifiers;
    const xcb_keycode_t* const keys = xcb_get_modifier_mapping_keycodes(reply.get());
    for (int bit = 0; bit < modifierCount; ++bit) {
        for (int i = 0; i < reply->keycodes_per_modifier; ++i) {
            const xcb_keycode_t key = keys[bit * reply->keycodes_per_modifier + i];
            const auto mask = static_cast<quint16>(1U << static_cast<unsigned>(bit));
            if (layout.hasAny(key, {XKB_KEY_Alt_L, XKB_KEY_Alt_R}))
                modifiers.alt |= mask;
            if (layout.hasAny(key, {XKB_KEY_Super_L, XKB_KEY_Super_R}))
                modifiers.super |= mask;
        }
    }
    return modifiers;
}

std::optional<quint16> X11Modifiers::mask(quint32 carbonModifiers) const
{
    if ((carbonModifiers & ~carbon::all) != 0)
        return std::nullopt;
    quint16 mask = 0;
    for (const Pair& pair : pairsOf(*this)) {
        if ((carbonModifiers & pair.carbon) == 0)
            continue;
        if (pair.mask == 0)
            return std::nullopt;
        mask |= pair.mask;
    }
    return mask;
}

quint32 X11Modifiers::carbonModifiers(quint32 state) const
{
    quint32 result = 0;
    for (const Pair& pair : pairsOf(*this)) {
        if ((state & pair.mask) != 0)
            result |= pair.carbon;
    }
    return result;
}

quint16 X11Modifiers::ours() const
{
    return static_cast<quint16>(XCB_MOD_MASK_SHIFT | XCB_MOD_MASK_CONTROL | alt | super);
}

std::vector<quint16> X11Modifiers::lockVariants() const
{
    // Any of the others may be on while the combination is pressed: Caps, Num or Scroll Lock, a third level.
    const auto others = static_cast<quint16>(allModifiers & ~quint32{ours()});
    std::vector<quint16> variants;
    for (quint32 variant = 0; variant <= allModifiers; ++variant) {
        if ((variant & ~quint32{others}) == 0)
            variants.push_back(static_cast<quint16>(variant));
    }
    return variants;
}

quint16 X11Modifiers::withoutLocks(quint32 state) const
{
    return static_cast<quint16>(state & ours());
}

} // namespace tulvane
