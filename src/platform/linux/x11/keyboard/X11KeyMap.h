#pragma once

#include <platform/linux/x11/keyboard/KeyboardLayout.h>
#include <platform/linux/x11/keyboard/X11Modifiers.h>
#include <ports/VirtualKeys.h>

#include <QHash>
#include <QString>

#include <memory>
#include <optional>

namespace tulvane {

/// The keyboard of an X server: which of its key codes is which position, which bits are which modifier, and
/// what the layout makes the keys type. Follows changes of the keyboard and of the layout. Main thread.
class X11KeyMap final {
public:
    /// Null where the server lacks the XKB extension or its keymap cannot be read. `connection` outlives this
    /// object.
    [[nodiscard]] static std::unique_ptr<X11KeyMap> load(X11Connection& connection);
    X11KeyMap(const X11KeyMap&) = delete;
    X11KeyMap& operator=(const X11KeyMap&) = delete;

    /// Whether the event says that the keymap is another one now; `reload` is due then.
    [[nodiscard]] bool isChange(const xcb_generic_event_t& event) const;
    /// True when anything that this class tells is otherwise than before.
    [[nodiscard]] bool reload();

    /// The server's code for a position; none for a key that X11 cannot see.
    [[nodiscard]] std::optional<xcb_keycode_t> keycode(quint32 virtualKey) const;
    [[nodiscard]] std::optional<quint32> virtualKey(quint32 keycode) const;
    [[nodiscard]] const X11Modifiers& modifiers() const { return m_facts.modifiers; }
    /// What stands on a printing key in the first layout; empty where that is nothing to show.
    [[nodiscard]] QString label(quint32 virtualKey) const { return m_facts.labels.value(virtualKey); }
    /// The position that types a keysym, by its name or, for a single character, by that.
    [[nodiscard]] std::optional<quint32> keyForKeysym(const QString& name) const;

private:
    struct Facts {
        QHash<quint32, xcb_keycode_t> keycodes; ///< by virtual key code
        QHash<quint32, QString> labels;
        X11Modifiers modifiers;

        [[nodiscard]] friend bool operator==(const Facts&, const Facts&) = default;
    };
    X11KeyMap(X11Connection& connection, KeyboardLayout layout);
    static void selectChanges(X11Connection& connection);
    [[nodiscard]] Facts facts() const;

    X11Connection& m_connection;
    KeyboardLayout m_layout;
    Facts m_facts;
};

} // namespace tulvane
