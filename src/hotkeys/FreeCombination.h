#pragma once

#include <hotkeys/ShortcutRules.h>
#include <ports/GlobalHotkeys.h>

#include <optional>

namespace tulvane {

/// A combination that the user may set and that no program holds at the moment: the first that is free of a
/// few that are easy to press and mean little in most programs. None where all of them are taken, or where
/// nothing can be registered at all. The desktop is asked about each. Main thread.
[[nodiscard]] std::optional<KeyCombination> freeCombination(GlobalHotkeys& hotkeys,
                                                            const ShortcutRules::MenuItemOf& menuItemOf = {});

} // namespace tulvane
