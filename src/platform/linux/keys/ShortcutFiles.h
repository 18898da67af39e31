#pragma once

#include <platform/linux/keys/Accelerator.h>
#include <ports/GlobalHotkeys.h>

#include <QByteArray>
#include <QList>

namespace tulvane {

// Each reads one desktop's own file of key combinations. Entries that make no sense, or that no keyboard of
// this layout can type, are left out.

/// kglobalshortcutsrc
[[nodiscard]] QList<SymbolicHotkey> readKdeShortcuts(const QByteArray& file, const KeyLookup& keyOf);
/// xfce4-keyboard-shortcuts.xml
[[nodiscard]] QList<SymbolicHotkey> readXfceShortcuts(const QByteArray& file, const KeyLookup& keyOf);
/// openbox's rc.xml
[[nodiscard]] QList<SymbolicHotkey> readOpenboxShortcuts(const QByteArray& file, const KeyLookup& keyOf);

} // namespace tulvane
