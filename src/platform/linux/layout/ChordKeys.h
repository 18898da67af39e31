#pragma once

#include <platform/linux/layout/XkbKeymap.h>
#include <ports/PasteChord.h>

#include <QList>

namespace tulvane {

/// The keys of a chord by the Linux kernel's numbers, modifiers first, where the layout has them; a letter
/// that it lacks is where a US keyboard has it. Empty for a chord with a key that is unknown.
[[nodiscard]] QList<quint32> chordKeysIn(const std::optional<XkbKeymap>& layout, const PasteChord& chord);

} // namespace tulvane
