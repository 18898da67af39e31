#include <speech/whisper/BlockReader.h>

#include <QBuffer>

#include <gtest/gtest.h>

#include <algorithm>
#include <numeric>

namespace tulvane {
namespace {

constexpr qint64 fileSize = 100'000; // several blocks, the last one partly filled

class BlockReading : public testing::Test {
protected:
    BlockReading() : m_content(fileSize, '\0')
    {
        std::iota(m_content.begin(), m_content.end(), '\0');
        m_file.setData(m_content);
        m_file.open(QIODevice::ReadOnly | QIODevice::Unbuffered);
    }

    /// What stands at `position` now that `count` bytes are read.
    QByteArray readSome(BlockReader& reader, qint64 count)
    {
        QByteArray bytes(count, '?');
        bytes.resize(reader.read(bytes.data(), count));
        return bytes;
    }

    QByteArray m_content;
    QBuffer m_file;
};

TEST_F(BlockReading, readsTheWholeFileInPiecesOfAnySize)
{
    for (const qint64 piece : {1, 3, 4, 1000, 16383, 16384, 16385, 40'000, 99'999, 100'000, 200'000}) {
        BlockReader reader(m_file);
        QByteArray all;
        for (QByteArray part = readSome(reader, piece); !part.isEmpty(); part = readSome(reader, piece))
            all += part;
        EXPECT_TRUE(all == m_content) << piece;
        EXPECT_EQ(reader.position(), fileSize) << piece;
    }
}

TEST_F(BlockReading, givesWhatThereIsBeforeTheEnd)
{
    BlockReader reader(m_file);
    ASSERT_TRUE(reader.seek(fileSize - 10));
    EXPECT_EQ(readSome(reader, 11), m_content.last(10));
    EXPECT_EQ(readSome(reader, 1), QByteArray());
    ASSERT_TRUE(reader.seek(fileSize - 20'000));
    EXPECT_EQ(readSome(reader, 20'001), m_content.last(20'000));
}

TEST_F(BlockReading, jumpsWithinTheBlockAndBeyond)
{
    BlockReader reader(m_file);
    for (const qint64 position : {5000, 5004, 16384, 16000, 70'000, 3, 99'999}) {
        ASSERT_TRUE(reader.seek(position));
        EXPECT_EQ(reader.position(), position);
        EXPECT_EQ(readSome(reader, 7), m_content.mid(position, 7)) << position;
    }
}

TEST_F(BlockReading, refusesToJumpPastTheEnd)
{
    BlockReader reader(m_file);
    EXPECT_TRUE(reader.seek(fileSize));
    EXPECT_FALSE(reader.seek(fileSize + 1));
    EXPECT_EQ(readSome(reader, 1), QByteArray());
}

TEST_F(BlockReading, mixesSmallAndLargeReads)
{
    BlockReader reader(m_file);
    QByteArray all = readSome(reader, 5);
    all += readSome(reader, 50'000);
    all += readSome(reader, 2);
    all += readSome(reader, 16384);
    EXPECT_TRUE(all == m_content.first(all.size()));
    EXPECT_EQ(all.size(), 5 + 50'000 + 2 + 16384);
}

TEST_F(BlockReading, aFileThatCannotBeReadEndsWhereItIs)
{
    QBuffer closed;
    BlockReader reader(closed);
    EXPECT_EQ(readSome(reader, 4), QByteArray());
    EXPECT_EQ(readSome(reader, 100'000), QByteArray());
}

} // namespace
} // namespace tulvane
