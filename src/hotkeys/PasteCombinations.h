#pragma once

#include <ports/GlobalHotkeys.h>
#include <ports/KeyCombination.h>

namespace tulvane {

/// Whether programs copy or paste with the combination in the layout that is in use. As a hotkey it would
/// never reach them, and neither would a dictated text. Main thread.
[[nodiscard]] bool isUsedForPasting(const GlobalHotkeys& hotkeys, const KeyCombination& combination);

} // namespace tulvane
