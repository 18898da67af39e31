#pragma once

#include <base/Result.h>
#include <ports/TransferError.h>

#include <QString>

#include <cstddef>
#include <span>

namespace tulvane::transfers {

/// A file that grows as bytes arrive; open and locked as long as this lives, so that no two processes write
/// the same one. One thread at a time.
class PartialFile final {
public:
    PartialFile() = default;
    PartialFile(const PartialFile&) = delete;
    PartialFile& operator=(const PartialFile&) = delete;
    PartialFile(PartialFile&& other) noexcept;
    PartialFile& operator=(PartialFile&& other) noexcept;
    ~PartialFile();

    /// Opens or makes the file. Fails with `alreadyRunning` when another process has it, else `notWritten`.
    [[nodiscard]] static Result<PartialFile, TransferError> open(const QString& path);

    /// Bytes in the file.
    [[nodiscard]] qint64 size() const { return m_size; }
    /// Where the next byte goes.
    [[nodiscard]] qint64 position() const { return m_position; }
    /// Cuts the file and goes on writing at its new end.
    [[nodiscard]] Result<void, TransferError> cutTo(qint64 size);
    /// Goes on writing at the beginning, without giving up the bytes that are there.
    void rewind() { m_position = 0; }
    /// Writes all of it, or fails with `noSpace` or `notWritten`; what was written by then stays.
    [[nodiscard]] Result<void, TransferError> write(std::span<const std::byte> bytes);
    /// Returns when every byte is on the disk itself.
    [[nodiscard]] Result<void, TransferError> flushToDisk();
    /// Bytes that the file system has left for this user.
    [[nodiscard]] qint64 freeSpace() const;

private:
    int m_descriptor = -1;
    qint64 m_size = 0;
    qint64 m_position = 0;
    qint64 m_pushed = 0;
};

} // namespace tulvane::transfers
