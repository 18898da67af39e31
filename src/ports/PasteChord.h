#pragma once

#include <QList>
#include <QString>

namespace tulvane {

/// The keys that a program takes for "paste": modifiers, and one key.
struct PasteChord {
    static constexpr quint8 control = 1;
    static constexpr quint8 shift = 2;
    static constexpr quint8 alt = 4;
    static constexpr quint8 super = 8;

    quint8 modifiers = control;        ///< of these
    QString key = QStringLiteral("v"); ///< a letter, a digit, "insert", or "f1" and so on

    static const PasteChord controlV;
    static const PasteChord controlShiftV;
    static const PasteChord shiftInsert;
    static const PasteChord controlY;

    [[nodiscard]] friend bool operator==(const PasteChord&, const PasteChord&) = default;
};

inline const PasteChord PasteChord::controlV{};
inline const PasteChord PasteChord::controlShiftV{control | shift, QStringLiteral("v")};
inline const PasteChord PasteChord::shiftInsert{shift, QStringLiteral("insert")};
inline const PasteChord PasteChord::controlY{control, QStringLiteral("y")};

/// Where a program reads what it pastes: the clipboard, or the text selected last (PRIMARY). Both get the
/// text where it is not known which of them the program reads.
enum class PasteSelection { clipboard, primary, both };

/// What becomes of the line breaks in a text: a terminal may run each line as a command.
enum class PasteLineBreaks { kept, asSpaces };

/// How to paste into the windows of one class.
struct PasteRule {
    QString windowClass; ///< either part of WM_CLASS, compared without upper and lower case
    PasteChord chord = PasteChord::controlShiftV;
    PasteSelection selection = PasteSelection::clipboard;
    PasteLineBreaks lineBreaks = PasteLineBreaks::asSpaces;

    [[nodiscard]] friend bool operator==(const PasteRule&, const PasteRule&) = default;
};

/// The windows that do not paste on Ctrl+V from the clipboard, most of them terminals; the first rule that
/// fits counts.
using PasteRules = QList<PasteRule>;

} // namespace tulvane
