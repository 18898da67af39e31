#pragma once

#include <ports/KeyCombination.h>
#include <ports/VirtualKeys.h>

#include <QString>

#include <functional>

namespace tulvane {

/// What the current layout makes a printing key type; empty where it says nothing useful.
using KeyLabel = std::function<QString(const VirtualKey&)>;

/// A key combination as Linux desktops write it: "Ctrl+Alt+D", in the user's language.
[[nodiscard]] KeyDisplay linuxKeyDisplay(const KeyCombination& combination, const KeyLabel& labelOf = {});

} // namespace tulvane
