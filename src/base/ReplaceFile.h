#pragma once

#include <base/Result.h>

#include <QByteArray>
#include <QString>

namespace tulvane {

/// Replaces the file by these bytes in one step, through a temporary file that is on the disk before it takes
/// the name, so that a crash or a full disk leaves the old file or the new one. Makes the folders that are
/// missing; writes through a symbolic link; a new file is readable by its owner only. Fails with the system's
/// reason, and then leaves what was there. Any thread; blocks until the bytes are on the disk.
[[nodiscard]] Result<void, QString> replaceFile(const QString& path, const QByteArray& bytes);

} // namespace tulvane
