#include <hotkeys/HotkeyStateMachine.h>

#include <utility>

namespace tulvane {

std::optional<HotkeyStateMachine::Action> HotkeyStateMachine::handle(Event event, Timestamp now)
{
    return event == Event::keyDown ? handleKeyDown(now) : handleKeyUp(now);
}

std::optional<HotkeyStateMachine::Action> HotkeyStateMachine::handleKeyDown(Timestamp now)
{
    if (isKeyDown)
        return std::nullopt;
    isKeyDown = true;
    keyDownAt = now;
    switch (mode) {
    case HotkeyMode::toggle:
        return isRecording ? end(Action::stop) : startUnlessRecording();
    case HotkeyMode::hold:
        return startUnlessRecording();
    case HotkeyMode::hybrid:
        if (isRecording && std::exchange(toggledOnByTap, false))
            return end(Action::stop);
        return startUnlessRecording();
    }
    Q_UNREACHABLE();
}

std::optional<HotkeyStateMachine::Action> HotkeyStateMachine::handleKeyUp(Timestamp now)
{
    if (!isKeyDown)
        return std::nullopt;
    isKeyDown = false;
    // A press whose beginning is not known counts as a hold: what was said is worth more than a tap.
    const Seconds held = keyDownAt ? Seconds(now - *keyDownAt) : tapThreshold;
    keyDownAt.reset();
    if (!isRecording)
        return std::nullopt;
    switch (mode) {
    case HotkeyMode::toggle:
        return std::nullopt;
    case HotkeyMode::hold:
        return end(held < tapThreshold ? Action::cancel : Action::stop);
    case HotkeyMode::hybrid:
        if (toggledOnByTap)
            return std::nullopt;
        if (held < tapThreshold) {
            toggledOnByTap = true;
            return std::nullopt;
        }
        return end(Action::stop);
    }
    Q_UNREACHABLE();
}

std::optional<HotkeyStateMachine::Action> HotkeyStateMachine::startUnlessRecording()
{
    if (isRecording)
        return std::nullopt;
    isRecording = true;
    return Action::start;
}

HotkeyStateMachine::Action HotkeyStateMachine::end(Action action)
{
    isRecording = false;
    return action;
}

void HotkeyStateMachine::markRecordingEnded()
{
    isRecording = false;
    toggledOnByTap = false;
}

void HotkeyStateMachine::markRecordingStarted()
{
    isRecording = true;
    toggledOnByTap = mode == HotkeyMode::hybrid;
}

const char* name(HotkeyStateMachine::Event event)
{
    return event == HotkeyStateMachine::Event::keyDown ? "keyDown" : "keyUp";
}

const char* name(HotkeyStateMachine::Action action)
{
    switch (action) {
    case HotkeyStateMachine::Action::start:
        return "start";
    case HotkeyStateMachine::Action::stop:
        return "stop";
    case HotkeyStateMachine::Action::cancel:
        return "cancel";
    }
    Q_UNREACHABLE();
}

} // namespace tulvane
