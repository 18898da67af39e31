#include <base/Clock.h>
#include <base/Log.h>
#include <base/Translate.h>
#include <hotkeys/HotkeyController.h>
#include <hotkeys/KeyboardShortcuts.h>
#include <hotkeys/MainThread.h>
#include <ports/VirtualKeys.h>
#include <settings/AppSettings.h>

#include <QPointer>
#include <QStringList>

#include <utility>

namespace tulvane {

namespace {

std::optional<qint64> keyCodeOf(ModifierHotkey key)
{
    switch (key) {
    case ModifierHotkey::none:
        return std::nullopt;
    case ModifierHotkey::rightOption:
        return virtualKeys::rightOption;
    case ModifierHotkey::rightCommand:
        return virtualKeys::rightCommand;
    case ModifierHotkey::rightControl:
        return virtualKeys::rightControl;
    case ModifierHotkey::rightShift:
        return virtualKeys::rightShift;
    case ModifierHotkey::fn:
        return virtualKeys::fn;
    }
    Q_UNREACHABLE();
}

} // namespace

HotkeyController::HotkeyController(AppSettings& settings, KeyboardShortcuts& shortcuts,
                                   ModifierEvents& modifierEvents, const Clock& clock, QObject* parent)
    : QObject(parent),
      m_settings(settings),
      m_shortcuts(shortcuts),
      m_modifierEvents(modifierEvents),
      m_clock(clock)
{
    machine.mode = settings.hotkeyMode();
    listenToCombination();
    connect(&m_settings.hotkeyMode, &AnySetting::changed, this, &HotkeyController::followHotkeyMode);
    followHotkeyMode();
    connect(&m_settings.modifierHotkey, &AnySetting::changed, this, &HotkeyController::followModifierHotkey);
    connect(&m_settings.readsKeyboards, &AnySetting::changed, this, &HotkeyController::followReading);
    followModifierHotkey();
}

void HotkeyController::listenToCombination()
{
    m_shortcuts.declare(ShortcutName::dictate());
    // The handlers stay attached for the life of the process, so they must outlive this object unharmed.
    const QPointer<HotkeyController> self(this);
    m_shortcuts.onKeyDown(ShortcutName::dictate(), [self] {
        requireMainThread("HotkeyController: key down");
        if (self)
            self->handle(HotkeyStateMachine::Event::keyDown, self->m_shortcuts.eventAge());
    });
    m_shortcuts.onKeyUp(ShortcutName::dictate(), [self] {
        requireMainThread("HotkeyController: key up");
        if (self)
            self->handle(HotkeyStateMachine::Event::keyUp, self->m_shortcuts.eventAge());
    });
}

void HotkeyController::followHotkeyMode()
{
    const HotkeyMode mode = m_settings.hotkeyMode();
    // The settings tell of every assignment, also of one that changes nothing.
    if (std::exchange(m_seenMode, mode) != mode)
        machine.mode = mode;
}

void HotkeyController::followModifierHotkey()
{
    const ModifierHotkey key = m_settings.modifierHotkey();
    if (std::exchange(m_seenModifier, key) != key)
        applyModifierHotkey(key);
}

void HotkeyController::followReading()
{
    if (m_modifierEvents.readsEveryKey())
        applyModifierHotkey(m_settings.modifierHotkey());
}

void HotkeyController::handle(HotkeyStateMachine::Event event, std::chrono::milliseconds age)
{
    const auto action = machine.handle(event, m_clock.elapsed() - age);
    if (!action)
        return;
    qCDebug(lcHotkey, "%s → %s", name(event), name(*action));
    // From a copy: the callback may be replaced while it runs.
    const std::function<void()> callback = *action == HotkeyStateMachine::Action::start  ? onStart
                                           : *action == HotkeyStateMachine::Action::stop ? onStop
                                                                                         : onCancel;
    if (callback)
        callback();
}

void HotkeyController::applyModifierHotkey(ModifierHotkey key)
{
    if (m_modifierTap)
        m_modifierTap->stop();
    m_modifierTap.reset();
    m_tapError.reset();
    const auto keyCode = keyCodeOf(key);
    if (keyCode && m_modifierEvents.readsEveryKey() && !m_settings.readsKeyboards()) {
        m_tapError = ModifierEventsError::unsupported(translate(
            "On this desktop a single key needs your leave to read the keyboard. Give it in the settings."));
    } else if (keyCode) {
        const QPointer<HotkeyController> self(this);
        auto tap = std::make_unique<ModifierKeyTap>(
            m_modifierEvents, *keyCode,
            [self](bool isDown) {
                if (self)
                    self->noteSingleKey(isDown);
            },
            [self] {
                if (self)
                    self->loseTap();
            });
        if (tap->start()) {
            m_modifierTap = std::move(tap);
        } else {
            qCCritical(lcHotkey, "Could not start modifier key tap (Input Monitoring permission missing?)");
            m_tapError = tap->failure();
        }
    }
    Q_EMIT modifierTapStateChanged();
}

void HotkeyController::noteSingleKey(bool isDown)
{
    // In the field that records a combination the key is pressed as a part of one; what it has begun it may
    // end.
    if (isDown && m_shortcuts.isRecorderActive() && !machine.isRecording)
        return;
    const auto age = m_modifierTap ? m_modifierTap->eventAge() : std::chrono::milliseconds(0);
    handle(isDown ? HotkeyStateMachine::Event::keyDown : HotkeyStateMachine::Event::keyUp, age);
}

void HotkeyController::loseTap()
{
    m_tapError = m_modifierTap ? m_modifierTap->failure() : std::nullopt;
    m_modifierTap.reset();
    Q_EMIT modifierTapStateChanged();
}

QString HotkeyController::hotkeyDescription() const
{
    QStringList parts;
    if (m_shortcuts.getShortcut(ShortcutName::dictate()))
        parts.append(m_shortcuts.display(ShortcutName::dictate()).text());
    if (m_settings.modifierHotkey() != ModifierHotkey::none)
        parts.append(title(m_settings.modifierHotkey()));
    return parts.isEmpty() ? translate("No hotkey set") : parts.join(translate(" or "));
}

ModifierTapState HotkeyController::modifierTapState() const
{
    if (m_tapError)
        return {ModifierTapState::Kind::failed, m_tapError};
    return {m_modifierTap ? ModifierTapState::Kind::running : ModifierTapState::Kind::off, {}};
}

} // namespace tulvane
