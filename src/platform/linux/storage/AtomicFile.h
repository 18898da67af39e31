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

/// The file that a path leads to through symbolic links, whether or not that file exists.
[[nodiscard]] QString linkTarget(const QString& path);

/// Reads a regular file of at most `limit` bytes. Never waits on a pipe or a device. Any thread.
[[nodiscard]] Result<QByteArray, FileFault> readFile(const QString& path, qint64 limit);

/// Replaces the file in one step: a reader, or a crash at any moment, meets the old content or the new one.
/// The content has reached the disk when this returns. The file is readable by its user alone. On a failure
/// (the reason is the result) the old file stands and nothing is left beside it. The name with ".new" added
/// is used on the way; two writers of one file need a lock between them. Any thread.
[[nodiscard]] Result<void, QString> replaceFileDurably(const QString& path, const QByteArray& content);

} // namespace tulvane
