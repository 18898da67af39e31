#pragma once

#include <base/Result.h>

#include <QByteArray>
#include <QString>

#include <chrono>

namespace tulvane {

/// Why there is no lock.
class LockError final {
public:
    explicit LockError(int number) : m_number(number) {}
    /// Another one holds the lock, and did so until the time had passed.
    [[nodiscard]] bool isHeld() const;
    /// The system's own words.
    [[nodiscard]] QString reason() const;

private:
    int m_number;
};

/// Keeps other processes (and other locks of this one) out for as long as it lives. The kernel lets go of it
/// when its process ends, however it ends, so nothing is ever left locked: what a killed process leaves, or
/// any other content of the lock file, locks nothing. The file goes with the lock.
class FileLock final {
public:
    /// Waits for the lock file at `path`, creating it where needed; fails when the time passes or the
    /// file cannot be made. Any thread; blocks.
    [[nodiscard]] static Result<FileLock, LockError> acquire(const QString& path,
                                                             std::chrono::milliseconds timeout);

    FileLock(FileLock&& other) noexcept;
    FileLock& operator=(FileLock&&) = delete;
    FileLock(const FileLock&) = delete;
    FileLock& operator=(const FileLock&) = delete;
    ~FileLock();

private:
    FileLock(int file, const QByteArray& name) : m_file(file), m_name(name) {}

    int m_file;
    QByteArray m_name;
};

} // namespace tulvane
