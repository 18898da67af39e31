#pragma once

#include <settings/HotkeyMode.h>

#include <chrono>
#include <optional>

namespace tulvane {

/// Turns the raw press and release of the dictation hotkey into commands. A plain value: no timers, no
/// threads; fed on the main thread with one event at a time, it answers with at most one action.
struct HotkeyStateMachine {
    enum class Event { keyDown, keyUp };
    enum class Action { start, stop, cancel };
    /// A moment of a clock that never goes back (Clock::elapsed).
    using Timestamp = std::chrono::nanoseconds;
    using Seconds = std::chrono::duration<double>;

    /// Replaced in place when the setting changes; nothing else is reset then, so a recording runs on and the
    /// next event is read under the new mode.
    HotkeyMode mode = HotkeyMode::toggle;
    /// A press shorter than this is a tap; one of exactly this length is not.
    Seconds tapThreshold{0.3};
    /// The machine believes that a recording is running.
    bool isRecording = false;
    /// The hotkey is held.
    bool isKeyDown = false;
    /// When the current press began.
    std::optional<Timestamp> keyDownAt;
    /// The running recording was latched on by a short tap (`hybrid` only) and waits for the next press.
    bool toggledOnByTap = false;

    /// Feeds one event with the moment at which it happened. Two presses without a release between them and a
    /// release without a press mean nothing.
    [[nodiscard]] std::optional<Action> handle(Event event, Timestamp now);

    /// A recording ended, or was given up, by something else than the hotkey.
    void markRecordingEnded();

    /// A recording was started by something else than the hotkey: the next press of the key is the one that
    /// ends it, in `hybrid` as after a tap.
    void markRecordingStarted();

private:
    [[nodiscard]] std::optional<Action> handleKeyDown(Timestamp now);
    [[nodiscard]] std::optional<Action> handleKeyUp(Timestamp now);
    [[nodiscard]] std::optional<Action> startUnlessRecording();
    [[nodiscard]] Action end(Action action);
};

/// The case names, for the log.
[[nodiscard]] const char* name(HotkeyStateMachine::Event event);
[[nodiscard]] const char* name(HotkeyStateMachine::Action action);

} // namespace tulvane
