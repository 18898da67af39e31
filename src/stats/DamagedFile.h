#pragma once

#include <QString>

namespace tulvane {

/// Keeps a second name, "<path>.damaged" (or ".damaged-2" and so on, none is ever overwritten), for a file
/// that could not be understood and is about to be replaced, so that its bytes are not lost. The file itself
/// stays in place. Best effort: where the system refuses, nothing is kept.
void keepDamagedFile(const QString& path);

/// Removes every file that `keepDamagedFile` has kept for this path.
void removeDamagedFiles(const QString& path);

} // namespace tulvane
