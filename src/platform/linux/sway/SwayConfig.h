#pragma once

#include <platform/linux/keys/Accelerator.h>
#include <platform/linux/sway/SwayConnection.h>
#include <ports/GlobalHotkeys.h>

#include <QList>
#include <QString>

namespace tulvane {

/// The key bindings of sway's default mode in a configuration, each with its command as the title. Entries
/// with keys that no keyboard of this layout has, with pointer buttons, or with several keys are left out.
[[nodiscard]] QList<SymbolicHotkey> readSwayBindings(const QString& configuration, const KeyLookup& keyOf);

/// The paths that the configuration includes, with variables and ~ as they stand.
[[nodiscard]] QStringList swayIncludes(const QString& configuration);

/// The configuration that sway has read, with the files that it includes. Waits for sway.
[[nodiscard]] QString wholeSwayConfiguration(SwayConnection& connection);

} // namespace tulvane
