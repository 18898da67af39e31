#pragma once

#include <QList>
#include <QString>

namespace tulvane {

/// The keys that a program takes for "paste".
enum class PasteChord { controlV, controlShiftV, shiftInsert };

/// Where a program reads what it pastes: the clipboard, or the text selected last (X11's PRIMARY).
enum class PasteSelection { clipboard, primary };

/// How to paste into the windows of one class.
struct TerminalWindow {
    QString windowClass; ///< either part of WM_CLASS, compared without upper and lower case
    PasteChord chord = PasteChord::controlShiftV;
    PasteSelection selection = PasteSelection::clipboard;

    [[nodiscard]] friend bool operator==(const TerminalWindow&, const TerminalWindow&) = default;
};

/// The windows that do not paste on Ctrl+V from the clipboard; the first entry that fits counts.
using TerminalTable = QList<TerminalWindow>;

} // namespace tulvane
