#pragma once

#include <base/Result.h>

#include <QString>

namespace tulvane {

/// Makes a folder and those above it that are missing, each for its user alone (0700), whatever the process's
/// umask permits. What is there already stays as it is. A failure, that no folder is there then, is the
/// system's reason. Any thread.
Result<void, QString> makePrivateFolder(const QString& path);

} // namespace tulvane
