#pragma once

#include <ports/PasteChord.h>

#include <QString>
#include <QStringList>
#include <QVariant>

namespace tulvane {

/// The preference under which the user names further windows: a list of strings, each the window's class,
/// alone or followed by "=" and the chord that pastes there ("ctrl+shift+v" where there is none): any of
/// "ctrl+", "shift+", "alt+" and "super+", and a letter, a digit, "insert" or "f1" to "f12". Before the chord
/// may stand "clipboard:" or "primary:", which the chord pastes from; without it, that is the text selected
/// last for Shift+Insert, and the clipboard for every other chord.
inline constexpr QLatin1StringView terminalWindowClassesKey{"terminalWindowClasses"};

/// The user's entries, and after them the windows that are known. Entries that make no sense are left out. A
/// window that the user names counts as a terminal unless it is known as something else.
[[nodiscard]] PasteRules pasteTable(const QVariant& terminalWindowClasses);

/// One sentence in English for each entry that makes no sense; none where all is well.
[[nodiscard]] QStringList pasteTableProblems(const QVariant& terminalWindowClasses);

} // namespace tulvane
