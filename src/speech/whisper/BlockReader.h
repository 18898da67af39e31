#pragma once

#include <QIODevice>

#include <array>

namespace tulvane {

/// Reads a file in blocks, and jumps ahead. A model's vocabulary takes a hundred thousand small reads, on
/// which a QIODevice spends longer than the library needs for the rest of a small model. The device should be
/// unbuffered.
class BlockReader final {
public:
    /// `file` is open and stays so while the reader is used; reading begins where the file begins.
    explicit BlockReader(QIODevice& file) : m_file(file), m_size(file.size()) {}

    [[nodiscard]] qint64 size() const { return m_size; }
    [[nodiscard]] qint64 position() const { return m_start + m_next; }

    /// Bytes put into `output`: fewer than `count` only at the end of the file, or where it cannot be read.
    [[nodiscard]] qint64 read(char* output, qint64 count);
    /// Whether the file goes so far. The next byte read is the one at `position`.
    [[nodiscard]] bool seek(qint64 position);

private:
    [[nodiscard]] qint64 readPastBlock(char* output, qint64 count);

    static constexpr std::size_t blockSize = 16384;

    QIODevice& m_file;
    qint64 m_size;
    std::array<char, blockSize> m_block{};
    qint64 m_start = 0;  ///< of the block in the file
    qint64 m_next = 0;   ///< byte of the block to be read next
    qint64 m_filled = 0; ///< bytes that the block holds
};

} // namespace tulvane
