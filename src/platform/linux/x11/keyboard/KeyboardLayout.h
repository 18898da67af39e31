#pragma once

#include <platform/linux/x11/connection/X11Connection.h>
#include <ports/VirtualKeys.h>

#include <QString>

#include <xkbcommon/xkbcommon.h>

#include <initializer_list>
#include <memory>
#include <optional>

namespace tulvane {

/// Where a letter lies: a key, and the group (layout) in which the key has it without Shift.
struct KeyPlace {
    xcb_keycode_t key = 0;
    std::uint8_t group = 0;
};

/// What the keys of the keyboard mean at one moment: the server's XKB keymap, read once. Copies share it.
/// Main thread.
class KeyboardLayout final {
public:
    /// Reads the layout that is in use now; cheap enough for every keystroke that we post. None where the
    /// server does not tell.
    [[nodiscard]] static std::optional<KeyboardLayout> current(X11Connection& link);
    /// That of one of the devices behind the keyboard (`KeyboardDevices`).
    [[nodiscard]] static std::optional<KeyboardLayout> ofDevice(X11Connection& link, qint32 device);

    /// The key for a letter: in the preferred group if it is there, else in the first one that has it.
    [[nodiscard]] std::optional<KeyPlace> find(xkb_keysym_t letter, std::uint8_t preferredGroup) const;

    /// The server's code for a position; none for a key that X11 cannot see.
    [[nodiscard]] std::optional<xcb_keycode_t> keycode(const VirtualKey& key) const;
    [[nodiscard]] xkb_layout_index_t groups() const { return xkb_keymap_num_layouts(m_keymap.get()); }
    /// The first keysym of a key in a group and on a level (0: without Shift); `XKB_KEY_NoSymbol` where there
    /// is none.
    [[nodiscard]] xkb_keysym_t keysym(xcb_keycode_t key, xkb_layout_index_t group,
                                      xkb_level_index_t level) const;
    /// Whether the key, without Shift and in any group, has one of these keysyms.
    [[nodiscard]] bool hasAny(xcb_keycode_t key, std::initializer_list<xkb_keysym_t> keysyms) const;

    /// Whether the key is one that changes others only while it is down: Shift, Ctrl, Alt, Super and their
    /// like. Locks are not.
    [[nodiscard]] bool isHeldModifier(xcb_keycode_t key) const;
    /// Whether a program may answer to the key alone, pressed and released: Alt opens menus, Super overviews.
    [[nodiscard]] bool actsAlone(xcb_keycode_t key) const;
    [[nodiscard]] xkb_keysym_t letterOf(xcb_keycode_t key) const;

private:
    using Keymap = std::shared_ptr<xkb_keymap>;
    explicit KeyboardLayout(Keymap keymap) : m_keymap(std::move(keymap)) {}

    Keymap m_keymap;
};

} // namespace tulvane
