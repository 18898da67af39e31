#pragma once

#include <platform/linux/layout/XkbKeymap.h>
#include <ports/KeyCombination.h>

#include <QString>

namespace tulvane {

/// A combination as the shortcuts of portals are written: "CTRL+ALT+d". Empty for a key that the layout has
/// no name for.
[[nodiscard]] QString portalTrigger(const KeyCombination& combination, const XkbKeymap& layout);

} // namespace tulvane
