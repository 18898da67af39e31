#pragma once

#include <QString>
#include <QStringList>

namespace tulvane {

/// What the speech library can compute with, once its backends were loaded from this folder: accelerators
/// first, each by its description ("CPU: ..." for the processor). Any thread.
[[nodiscard]] QStringList computingDevices(const QString& backendFolder);

} // namespace tulvane
