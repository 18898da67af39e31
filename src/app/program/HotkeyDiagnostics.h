#pragma once

#include <app/program/Diagnostic.h>

namespace tulvane {

class HotkeyController;
class KeyboardShortcuts;

/// How both sources of the hotkey stand; only the program that holds them knows. Main thread.
[[nodiscard]] Diagnostics hotkeyDiagnostics(const KeyboardShortcuts& shortcuts,
                                            const HotkeyController& hotkeys);
/// The same two lines while no program holds any hotkey.
[[nodiscard]] Diagnostics hotkeyDiagnosticsWithoutProgram();

} // namespace tulvane
