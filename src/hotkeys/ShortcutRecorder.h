#pragma once

#include <hotkeys/ShortcutName.h>
#include <hotkeys/ShortcutRules.h>

#include <QObject>
#include <QString>

#include <optional>

namespace tulvane {

class KeyboardShortcuts;

/// What stands behind the field in which the user sets a name's combination: the window passes the field's
/// key events in and shows what comes out. Main thread.
class ShortcutRecorder final : public QObject {
    Q_OBJECT

public:
    /// What became of a key.
    enum class Outcome {
        ignored,   ///< the field is not recording, or a combination is still being pressed
        accepted,  ///< stored, and registered once the key goes up; recording has ended
        cleared,   ///< the name has no combination any more; recording has ended
        cancelled, ///< nothing has changed; recording has ended
        passedOn,  ///< recording has ended and the window does with the key what it always does
        beeped,    ///< not a combination; `beep` was emitted
        refused,   ///< in use already: see `message`
    };

    /// `shortcuts` outlives this object.
    ShortcutRecorder(KeyboardShortcuts& shortcuts, const ShortcutName& name,
                     const ShortcutRules::MenuItemOf& menuItemOf = {}, QObject* parent = nullptr);
    Q_DISABLE_COPY_MOVE(ShortcutRecorder)
    ~ShortcutRecorder() override;

    [[nodiscard]] bool isActive() const { return m_isActive; }
    /// Records, or waits for the recorded combination's key to go up: were it registered before, the
    /// keyboard's own repetitions of that key would press it.
    [[nodiscard]] bool isBusy() const { return m_isActive || m_heldKey; }
    /// Whether it is this key whose going up is waited for.
    [[nodiscard]] bool awaits(quint32 keyCode) const { return m_heldKey == keyCode; }
    /// The combination that is set, as the desktop writes it; empty where there is none.
    [[nodiscard]] QString text() const;
    /// What an empty field shows.
    [[nodiscard]] QString placeholder() const;
    /// Why the last combination was refused; empty otherwise.
    [[nodiscard]] QString message() const { return m_message; }

    void start();
    /// Also ends the wait for the key.
    void stop();
    /// A key went down in the field, with these modifiers held.
    Outcome keyPressed(const KeyCombination& combination);
    /// A key went up in the field.
    Outcome keyReleased(quint32 keyCode);
    /// The clear button, recording or not.
    void clear();
    /// Sets a combination that the user was offered, and ends recording.
    void choose(const KeyCombination& combination);

Q_SIGNALS:
    void changed();
    void beep();

private:
    /// Keys that steer the field when they are pressed alone.
    [[nodiscard]] std::optional<Outcome> handlePlainKey(quint32 keyCode);
    [[nodiscard]] Outcome record(const KeyCombination& combination);

    KeyboardShortcuts& m_shortcuts;
    ShortcutName m_name;
    ShortcutRules m_rules;
    QString m_message;
    bool m_isActive = false;
    std::optional<quint32> m_heldKey; ///< of the combination that was just accepted
    bool m_onlyModifiers = false;     ///< nothing but modifiers has been pressed since the last key
};

} // namespace tulvane
