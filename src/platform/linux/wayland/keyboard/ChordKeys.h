#pragma once

#include <ports/PasteChord.h>

#include <QList>

namespace tulvane {

/// The keys of a chord by the Linux kernel's numbers, modifiers first, where a US keyboard has them. Empty
/// for a chord with a key that is unknown.
[[nodiscard]] QList<quint32> chordKeys(const PasteChord& chord);

} // namespace tulvane
