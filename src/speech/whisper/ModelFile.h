#pragma once

#include <base/Result.h>

#include <QFile>
#include <QString>

#include <memory>

namespace tulvane {

/// Opens a model file for reading. Fails, with the reason for the log, for what is missing, unreadable or no
/// plain file; a pipe or a device is never opened, so this does not block on one. Any thread.
[[nodiscard]] Result<std::unique_ptr<QFile>, QString> openModelFile(const QString& path);

} // namespace tulvane
