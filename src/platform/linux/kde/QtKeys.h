#pragma once

#include <platform/linux/layout/XkbKeymap.h>
#include <ports/KeyCombination.h>

#include <QList>

#include <optional>

namespace tulvane {

// KDE stores key combinations as the toolkit's numbers, which name what a key types and not where it is.

/// The numbers under which KDE sees this combination come, in the given layout. Empty for a key that KDE's
/// services know nothing of. Two where Shift makes the key type something else.
[[nodiscard]] QList<int> qtKeysOf(const KeyCombination& combination, const XkbKeymap& layout);

/// The combination that has one of these numbers, in the given layout.
[[nodiscard]] std::optional<KeyCombination> combinationOfQtKey(int number, const XkbKeymap& layout);

} // namespace tulvane
