#pragma once

#include <platform/linux/x11/keyboard/KeyboardDevices.h>
#include <platform/linux/x11/keyboard/KeyboardLayout.h>
#include <platform/linux/x11/keyboard/KeyboardState.h>

#include <QHash>
#include <QList>

#include <functional>
#include <optional>

namespace tulvane {

/// A key and the modifiers that belong to it, by what they mean.
struct KeyChord {
    xkb_keysym_t key;
    QList<xkb_keysym_t> modifiers;
};

/// Posts strokes by the XTEST extension, each with exactly its own modifiers, whatever is held down
/// meanwhile.
///
/// What fingers hold is let go for the stroke and held again afterwards, as far as they still do: a finger
/// may let go at any moment, and the server tells nothing of it for a key that is up already. Main thread.
class KeyStroke final {
public:
    /// `link` outlives it.
    explicit KeyStroke(X11Connection& link) : m_link(link) {}

    /// Presses and releases the chord where `isWanted`, the last that is asked, says so. False where it has
    /// posted nothing.
    [[nodiscard]] bool post(const KeyChord& chord, const std::function<bool()>& isWanted);

    /// Whether keys that fingers hold are down on the posting device too, which the server leaves down there
    /// when the finger lets go.
    [[nodiscard]] bool holdsKeys() const { return !m_inFingersStead.isEmpty(); }
    /// Lets go of what programs see up already. As long as it is down, the device does not press it anew, for
    /// us or for another program.
    void letGo();

private:
    /// Who holds a modifier that stands in the way of a stroke.
    enum class Holder {
        finger,
        program, ///< another one, which holds it until it says otherwise
        none,    ///< that matters: its key would do something else on the posting device
    };
    struct InTheWay {
        xcb_keycode_t code;
        Holder holder;
        bool actsAlone;
    };

    void readDevices();
    [[nodiscard]] QList<InTheWay> inTheWay(const KeyboardState& state) const;
    [[nodiscard]] std::optional<InTheWay> inTheWay(xcb_keycode_t code, const QList<HeldKey>& fingers,
                                                   const QList<HeldKey>& posted) const;
    void send(const KeyPlace& place, const QList<xkb_keysym_t>& modifiers, const KeyboardState& state);
    void sendAmong(xcb_keycode_t code, const QList<xkb_keysym_t>& modifiers, const KeyboardState& state);
    void holdAgain(const QList<InTheWay>& others);
    /// Whether all was as it should be.
    [[nodiscard]] bool holdAgainOnce(const QList<InTheWay>& others);
    void key(xcb_keycode_t code, bool down);
    void tap(xcb_keycode_t code);

    X11Connection& m_link;
    KeyboardDevices m_devices;
    std::optional<KeyboardLayout> m_layout;       ///< of the posting device
    QHash<quint8, KeyboardLayout> m_usersLayouts; ///< of the devices that have keys down
    QList<xcb_keycode_t> m_inFingersStead;
};

} // namespace tulvane
