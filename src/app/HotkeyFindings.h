#pragma once

#include <app/Finding.h>

namespace tulvane {

class HotkeyController;
class KeyboardShortcuts;

/// How both sources of the hotkey stand; only the program that holds them knows. Main thread.
[[nodiscard]] Findings hotkeyFindings(const KeyboardShortcuts& shortcuts, const HotkeyController& hotkeys);
/// The same two lines while no program holds any hotkey.
[[nodiscard]] Findings hotkeyFindingsWithoutProgram();

} // namespace tulvane
