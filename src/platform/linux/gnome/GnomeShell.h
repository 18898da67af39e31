#pragma once

#include <QDBusConnection>

namespace tulvane {

/// The version of the GNOME Shell on this bus, 48 for "48.1"; 0 where none tells. Waits for the answer, at
/// most two seconds.
[[nodiscard]] int gnomeShellVersion(const QDBusConnection& bus);

} // namespace tulvane
