#pragma once

#include <ports/KeyCombination.h>

#include <QString>
#include <QtGlobal>

#include <optional>

namespace tulvane {

/// A key combination as it is stored. The numbers are as wide as JSON's, so that a stored value comes back as
/// it was, whether or not a system would take it.
struct Shortcut {
    qint64 carbonKeyCode = 0;   ///< macOS virtual key code
    qint64 carbonModifiers = 0; ///< Carbon modifier mask

    /// From a key and the modifier flags of a window-system event (`eventFlags`).
    [[nodiscard]] static Shortcut fromFlags(qint64 keyCode, quint64 flags);
    [[nodiscard]] static Shortcut fromCombination(const KeyCombination& combination);
    /// None where the text is not the JSON of a shortcut.
    [[nodiscard]] static std::optional<Shortcut> fromJson(const QString& json);

    /// The stored form.
    [[nodiscard]] QString toJson() const;
    /// What a system registers; none where a number does not fit in 32 bits.
    [[nodiscard]] std::optional<KeyCombination> combination() const;

    [[nodiscard]] friend bool operator==(const Shortcut&, const Shortcut&) = default;
};

} // namespace tulvane
