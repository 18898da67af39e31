#pragma once

#include <ports/KeyCombination.h>

#include <QString>
#include <QStringView>

#include <functional>
#include <optional>

namespace tulvane {

/// The position of the key with an XKB keysym's name ("Page_Up") or of the one that types a character.
using KeyLookup = std::function<std::optional<quint32>(const QString& keysym)>;

// Each reads a key combination as one family of desktops writes it; none where a modifier or the key is
// none that can be stored.

/// "Ctrl+Alt+PgUp"
[[nodiscard]] std::optional<KeyCombination> fromQtAccelerator(QStringView text, const KeyLookup& keyOf);
/// "<Primary><Alt>Page_Up"
[[nodiscard]] std::optional<KeyCombination> fromGtkAccelerator(QStringView text, const KeyLookup& keyOf);
/// "C-A-Page_Up"
[[nodiscard]] std::optional<KeyCombination> fromOpenboxAccelerator(QStringView text, const KeyLookup& keyOf);

} // namespace tulvane
