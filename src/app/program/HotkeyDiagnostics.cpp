#include <app/program/HotkeyDiagnostics.h>
#include <hotkeys/FreeCombination.h>
#include <hotkeys/HotkeyController.h>
#include <hotkeys/KeyboardShortcuts.h>

namespace tulvane {

namespace {

const QString combination = QStringLiteral("key combination");
const QString singleKey = QStringLiteral("single key");

/// What to do, with a combination that would work where there is one.
QString remedyFor(const HotkeyError& error, const KeyboardShortcuts& shortcuts)
{
    GlobalHotkeys& hotkeys = shortcuts.hotkeys();
    const auto free = freeCombination(hotkeys);
    return free ? QStringLiteral("%1 %2 is free.").arg(error.description(), hotkeys.display(*free).text())
                : error.description();
}

Diagnostic combinationDiagnostic(const KeyboardShortcuts& shortcuts)
{
    const RegistrationState state = shortcuts.registration(ShortcutName::dictate());
    const QString keys = shortcuts.display(ShortcutName::dictate()).text();
    switch (state.kind) {
    case RegistrationState::Kind::noShortcut:
        return Diagnostic::good(combination, QStringLiteral("none is set"));
    case RegistrationState::Kind::unused:
    case RegistrationState::Kind::paused:
        return Diagnostic::bad(combination, keys + QStringLiteral(" is set aside for now."),
                               QStringLiteral("End the choice of a key combination."));
    case RegistrationState::Kind::registered:
        return Diagnostic::good(combination, keys + QStringLiteral(" is registered"));
    case RegistrationState::Kind::failed:
        break;
    }
    return Diagnostic::bad(combination, keys + QStringLiteral(" does nothing."),
                           state.error ? remedyFor(*state.error, shortcuts) : QString());
}

Diagnostic singleKeyDiagnostic(const HotkeyController& hotkeys)
{
    const ModifierTapState state = hotkeys.modifierTapState();
    switch (state.kind) {
    case ModifierTapState::Kind::off:
        return Diagnostic::good(singleKey, QStringLiteral("none is set"));
    case ModifierTapState::Kind::running:
        return Diagnostic::good(singleKey, QStringLiteral("is watched"));
    case ModifierTapState::Kind::failed:
        break;
    }
    return Diagnostic::bad(singleKey, QStringLiteral("Pressing it does nothing."),
                           state.error ? state.error->description() : QString());
}

} // namespace

Diagnostics hotkeyDiagnostics(const KeyboardShortcuts& shortcuts, const HotkeyController& hotkeys)
{
    Diagnostics diagnostics{combinationDiagnostic(shortcuts), singleKeyDiagnostic(hotkeys)};
    // Without either, only the menu and the command line begin a dictation.
    const bool hasNone =
        shortcuts.registration(ShortcutName::dictate()).kind == RegistrationState::Kind::noShortcut &&
        hotkeys.modifierTapState().kind == ModifierTapState::Kind::off;
    if (hasNone)
        diagnostics.first() = Diagnostic::bad(combination, QStringLiteral("No hotkey is set."),
                                              QStringLiteral("Choose one in the settings, or bind “tulvane "
                                                             "toggle” to a key in your desktop's own."));
    return diagnostics;
}

Diagnostics hotkeyDiagnosticsWithoutProgram()
{
    const QString why = QStringLiteral("Tulvane is not running, so no hotkey is registered.");
    const QString remedy = QStringLiteral("Start it: tulvane --background");
    return {Diagnostic::bad(combination, why, remedy), Diagnostic::bad(singleKey, why, remedy)};
}

} // namespace tulvane
