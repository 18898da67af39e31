#pragma once

#include <platform/linux/front/FrontProgram.h>
#include <ports/PasteTarget.h>

namespace tulvane {

/// How to paste into the program: by the first rule that names it, by Ctrl+V where none does. A program that
/// the desktop does not name gets Shift+Insert, which pastes in terminals and editors alike, from either
/// selection.
[[nodiscard]] PasteTarget ruledPasteTarget(const FrontProgram& program, const PasteRules& rules);

} // namespace tulvane
