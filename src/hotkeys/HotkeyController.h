#pragma once

#include <hotkeys/HotkeyStateMachine.h>
#include <hotkeys/ModifierKeyTap.h>
#include <ports/ModifierEvents.h>
#include <settings/ModifierHotkey.h>

#include <QObject>
#include <QString>

#include <functional>
#include <memory>
#include <optional>

namespace tulvane {

class AppSettings;
class Clock;
class KeyboardShortcuts;

/// How the single-key source stands.
struct ModifierTapState {
    enum class Kind {
        off,     ///< no single key is chosen
        running, ///< pressing it works
        failed,  ///< pressing it does nothing: `error` says why
    };

    Kind kind = Kind::off;
    std::optional<ModifierEventsError> error;

    [[nodiscard]] friend bool operator==(const ModifierTapState&, const ModifierTapState&) = default;
};

/// Connects both hotkey sources, the key combination and the single modifier key, to one state machine and
/// hands its commands on. Both are live at once. Follows the settings. Main thread.
class HotkeyController final : public QObject {
    Q_OBJECT

public:
    /// What the machine commands; one that is unset drops its command.
    std::function<void()> onStart;
    std::function<void()> onStop;
    std::function<void()> onCancel;
    /// A caller that starts or ends a recording by other means reports it to the machine.
    HotkeyStateMachine machine;

    /// Listens at once. All collaborators outlive this object.
    HotkeyController(AppSettings& settings, KeyboardShortcuts& shortcuts, ModifierEvents& modifierEvents,
                     const Clock& clock, QObject* parent = nullptr);

    /// Feeds one event, which happened `age` ago; both sources do.
    void handle(HotkeyStateMachine::Event event, std::chrono::milliseconds age = {});
    /// Replaces the watch over the single key, also by one for the same key: that is how a start that failed
    /// is tried again.
    void applyModifierHotkey(ModifierHotkey key);

    /// The current hotkey in the user's words.
    [[nodiscard]] QString hotkeyDescription() const;
    [[nodiscard]] ModifierTapState modifierTapState() const;
    /// Whether the single key needs every key to be read, which the user has to allow in the settings.
    [[nodiscard]] bool readsEveryKey() const { return m_modifierEvents.readsEveryKey(); }

Q_SIGNALS:
    void modifierTapStateChanged();

private:
    void listenToCombination();
    void followHotkeyMode();
    void followModifierHotkey();
    void followReading();
    void noteSingleKey(bool isDown);
    void loseTap();

    AppSettings& m_settings;
    KeyboardShortcuts& m_shortcuts;
    ModifierEvents& m_modifierEvents;
    const Clock& m_clock;
    std::unique_ptr<ModifierKeyTap> m_modifierTap;
    std::optional<ModifierEventsError> m_tapError;
    std::optional<HotkeyMode> m_seenMode;
    std::optional<ModifierHotkey> m_seenModifier;
};

} // namespace tulvane
