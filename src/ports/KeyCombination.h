#pragma once

#include <QString>
#include <QStringList>
#include <QtGlobal>

namespace tulvane {

/// A key and the modifiers that are held with it.
struct KeyCombination {
    quint32 keyCode = 0;   ///< macOS virtual key code, see VirtualKeys.h
    quint32 modifiers = 0; ///< Carbon mask, see KeyModifiers.h

    [[nodiscard]] friend bool operator==(const KeyCombination&, const KeyCombination&) = default;
};

/// How the desktop writes a key combination: "⌥Space" or "Alt+Space".
struct KeyDisplay {
    QStringList caps;  ///< what stands on the keys, modifiers first, in the user's language
    QString separator; ///< between them, where they are written in one line

    [[nodiscard]] QString text() const { return caps.join(separator); }
    [[nodiscard]] friend bool operator==(const KeyDisplay&, const KeyDisplay&) = default;
};

} // namespace tulvane
