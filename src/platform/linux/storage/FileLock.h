#pragma once

#include <base/Result.h>

#include <QString>

#include <chrono>

namespace tulvane {

/// Keeps other processes (and other locks of this one) out for as long as it lives. The kernel lets go of it
/// when its process ends, however it ends, so nothing is ever left locked. The lock file itself stays:
/// removing it would let two processes lock two files of the same name.
class FileLock final {
public:
    /// Waits for the lock file at `path`, creating it where needed; the reason when the time passes or the
    /// file cannot be made.
    [[nodiscard]] static Result<FileLock, QString> acquire(const QString& path,
                                                           std::chrono::milliseconds timeout);

    FileLock(FileLock&& other) noexcept;
    FileLock& operator=(FileLock&&) = delete;
    FileLock(const FileLock&) = delete;
    FileLock& operator=(const FileLock&) = delete;
    ~FileLock();

private:
    explicit FileLock(int file) : m_file(file) {}

    int m_file;
};

} // namespace tulvane
