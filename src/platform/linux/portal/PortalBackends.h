#pragma once

#include <QProcessEnvironment>
#include <QString>

namespace tulvane {

/// Whether the desktop that is running brings its own program for an interface of the portal's
/// ("GlobalShortcuts"). That the interface answers says nothing: portals fall back to the programs of other
/// desktops, whose answers come to nothing. Reads files. Any thread.
[[nodiscard]] bool hasPortalBackend(const QString& interface, const QProcessEnvironment& environment);

} // namespace tulvane
