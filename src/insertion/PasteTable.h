#pragma once

#include <ports/PasteChord.h>

#include <QString>
#include <QVariant>

namespace tulvane {

/// The preference under which the user names further terminals: a list of strings, each the window's class,
/// alone or followed by "=" and one of "ctrl+v", "ctrl+shift+v" (the default) and "shift+insert", the last of
/// which pastes the text selected last.
inline constexpr QLatin1StringView terminalWindowClassesKey{"terminalWindowClasses"};

/// The user's entries, and after them the terminals that are known. Entries that make no sense are left out.
[[nodiscard]] TerminalTable pasteTable(const QVariant& terminalWindowClasses);

} // namespace tulvane
