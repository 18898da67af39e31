#pragma once

#include <base/Result.h>

#include <QByteArray>
#include <QString>

#include <sys/types.h>

#include <optional>

namespace tulvane {

/// Tells one version of a file from another: every replacement and every change in place has its own.
struct FileStamp {
    dev_t device = 0;
    ino_t inode = 0;
    off_t size = 0;
    qint64 modified = 0; ///< nanoseconds
    qint64 changed = 0;  ///< nanoseconds; moves with the permissions too

    [[nodiscard]] friend bool operator==(const FileStamp&, const FileStamp&) = default;
};

/// Why a file could not be read.
struct FileFault {
    enum class Kind { missing, other };
    Kind kind = Kind::other;
    QString reason; ///< the system's own words
};

/// The stamp of what lies at the path, links followed; none where nothing does.
[[nodiscard]] std::optional<FileStamp> fileStamp(const QString& path);

/// The number of the file system that a path lies on, or would lie on: its nearest folder that exists
/// decides.
[[nodiscard]] std::optional<dev_t> fileSystemOf(QString path);

/// The file that a path leads to through symbolic links, whether or not that file exists.
[[nodiscard]] QString linkTarget(const QString& path);

/// Reads a regular file of at most `limit` bytes. Never waits on a pipe or a device. Any thread.
[[nodiscard]] Result<QByteArray, FileFault> readFile(const QString& path, qint64 limit);

/// Replaces the file by these bytes in one step: a reader, or a crash at any moment, meets the old content or
/// the new one. Content and name have reached the disk when this returns. Makes the folders that are missing;
/// writes through a symbolic link; the file is readable by its user alone. On a failure (the result is the
/// system's reason) the old file stands and nothing is left beside it. The target's name with ".new" added is
/// used on the way, and locked there, so that two writers come one after the other. Any thread; blocks on the
/// disk.
[[nodiscard]] Result<void, QString> replaceFile(const QString& path, const QByteArray& bytes);

} // namespace tulvane
