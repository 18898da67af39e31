#include <app/HotkeyFindings.h>
#include <hotkeys/HotkeyController.h>
#include <hotkeys/KeyboardShortcuts.h>

namespace tulvane {

namespace {

const QString combination = QStringLiteral("key combination");
const QString singleKey = QStringLiteral("single key");

Finding combinationFinding(const KeyboardShortcuts& shortcuts)
{
    const RegistrationState state = shortcuts.registration(ShortcutName::dictate());
    const QString keys = shortcuts.display(ShortcutName::dictate()).text();
    switch (state.kind) {
    case RegistrationState::Kind::noShortcut:
        return Finding::good(combination, QStringLiteral("none is set"));
    case RegistrationState::Kind::unused:
    case RegistrationState::Kind::paused:
        return Finding::bad(combination, keys + QStringLiteral(" is set aside for now."),
                            QStringLiteral("End the choice of a key combination."));
    case RegistrationState::Kind::registered:
        return Finding::good(combination, keys + QStringLiteral(" is registered"));
    case RegistrationState::Kind::failed:
        break;
    }
    return Finding::bad(combination, keys + QStringLiteral(" does nothing."),
                        state.error ? state.error->description() : QString());
}

Finding singleKeyFinding(const HotkeyController& hotkeys)
{
    const ModifierTapState state = hotkeys.modifierTapState();
    switch (state.kind) {
    case ModifierTapState::Kind::off:
        return Finding::good(singleKey, QStringLiteral("none is set"));
    case ModifierTapState::Kind::running:
        return Finding::good(singleKey, QStringLiteral("is watched"));
    case ModifierTapState::Kind::failed:
        break;
    }
    return Finding::bad(singleKey, QStringLiteral("Pressing it does nothing."),
                        state.error ? state.error->description() : QString());
}

} // namespace

Findings hotkeyFindings(const KeyboardShortcuts& shortcuts, const HotkeyController& hotkeys)
{
    Findings findings{combinationFinding(shortcuts), singleKeyFinding(hotkeys)};
    // Without either, only the menu and the command line begin a dictation.
    const bool hasNone =
        shortcuts.registration(ShortcutName::dictate()).kind == RegistrationState::Kind::noShortcut &&
        hotkeys.modifierTapState().kind == ModifierTapState::Kind::off;
    if (hasNone)
        findings.first() = Finding::bad(combination, QStringLiteral("No hotkey is set."),
                                        QStringLiteral("Choose one in the settings, or bind “tulvane "
                                                       "toggle” to a key in your desktop's own."));
    return findings;
}

Findings hotkeyFindingsWithoutProgram()
{
    const QString why = QStringLiteral("Tulvane is not running, so no hotkey is registered.");
    const QString remedy = QStringLiteral("Start it: tulvane --background");
    return {Finding::bad(combination, why, remedy), Finding::bad(singleKey, why, remedy)};
}

} // namespace tulvane
