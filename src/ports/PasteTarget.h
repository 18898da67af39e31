#pragma once

#include <ports/PasteChord.h>

#include <QtGlobal>

namespace tulvane {

/// Where one paste goes: the window in front at one moment, the selection that this window reads when it
/// pastes, and the keys on which it does. They belong together: what is written, and which keys are posted,
/// follow from one and the same answer.
struct PasteTarget {
    quint64 window = 0; ///< by the desktop's own number; 0 where no window has the keyboard focus
    PasteSelection selection = PasteSelection::clipboard;
    PasteChord chord = PasteChord::controlV;
    PasteLineBreaks lineBreaks = PasteLineBreaks::kept;

    [[nodiscard]] friend bool operator==(const PasteTarget&, const PasteTarget&) = default;
};

} // namespace tulvane
