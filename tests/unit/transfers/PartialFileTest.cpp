#include <platform/linux/transfers/http/PartialFile.h>
#include <support/FileSizeLimit.h>
#include <support/ScratchFolder.h>

#include <QFileInfo>

#include <gtest/gtest.h>

namespace tulvane::transfers {
namespace {

using Kind = TransferError::Kind;

std::span<const std::byte> bytesOf(const QByteArray& text)
{
    return std::as_bytes(std::span(text.constData(), static_cast<std::size_t>(text.size())));
}

class Partial : public ::testing::Test {
protected:
    [[nodiscard]] Result<PartialFile, TransferError> open() const
    {
        return PartialFile::open(m_folder.file(QStringLiteral("p")));
    }
    [[nodiscard]] QByteArray content() const { return m_folder.read(QStringLiteral("p")); }

    test::ScratchFolder m_folder;
};

TEST_F(Partial, GrowsWhereItEnded)
{
    {
        auto file = open();
        ASSERT_TRUE(file && file->write(bytesOf("abc")));
    }
    auto file = open();
    ASSERT_TRUE(file);
    EXPECT_EQ(file->size(), 3);
    ASSERT_TRUE(file->write(bytesOf("def")));
    EXPECT_EQ(content(), "abcdef");
    EXPECT_TRUE(file->flushToDisk());
}

TEST_F(Partial, IsCutAndRewrittenInPlace)
{
    auto file = open();
    ASSERT_TRUE(file && file->write(bytesOf("abcdef")));
    file->rewind();
    ASSERT_TRUE(file->write(bytesOf("AB")));
    EXPECT_EQ(content(), "ABcdef");
    EXPECT_EQ(file->position(), 2);
    EXPECT_EQ(file->size(), 6);
    ASSERT_TRUE(file->cutTo(1));
    ASSERT_TRUE(file->write(bytesOf("z")));
    EXPECT_EQ(content(), "Az");
}

TEST_F(Partial, BelongsToOneAtATime)
{
    auto first = open();
    ASSERT_TRUE(first);
    const auto second = open();
    ASSERT_FALSE(second);
    EXPECT_EQ(second.error().kind(), Kind::alreadyRunning);
    first = failure(TransferError(Kind::cancelled));
    EXPECT_TRUE(open());
}

TEST_F(Partial, IsTheUsersOwn)
{
    ASSERT_TRUE(open());
    EXPECT_EQ(QFileInfo(m_folder.file(QStringLiteral("p"))).permissions() & 0x0fff,
              QFileDevice::ReadUser | QFileDevice::WriteUser);
}

TEST_F(Partial, DoesNotFollowALink)
{
    m_folder.write(QStringLiteral("precious"), "mine");
    ASSERT_TRUE(QFile::link(m_folder.file(QStringLiteral("precious")), m_folder.file(QStringLiteral("p"))));
    const auto file = open();
    ASSERT_FALSE(file);
    EXPECT_EQ(file.error().kind(), Kind::notWritten);
    EXPECT_FALSE(file.error().detail().isEmpty());
}

TEST_F(Partial, KeepsWhatFitsOnAFullDisk)
{
    auto file = open();
    ASSERT_TRUE(file);
    const test::FileSizeLimit limit(4);
    const auto written = file->write(bytesOf("abcdef"));
    ASSERT_FALSE(written);
    EXPECT_EQ(written.error().kind(), Kind::noSpace);
    EXPECT_EQ(file->size(), 4);
    EXPECT_EQ(content(), "abcd");
}

TEST_F(Partial, KnowsTheRoomThatIsLeft)
{
    auto file = open();
    ASSERT_TRUE(file);
    EXPECT_GT(file->freeSpace(), 0);
}

} // namespace
} // namespace tulvane::transfers
