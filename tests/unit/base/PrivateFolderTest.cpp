#include <base/PrivateFolder.h>
#include <support/ScratchFolder.h>

#include <gtest/gtest.h>
#include <sys/stat.h>

namespace tulvane {

namespace {

mode_t modeOf(const QString& path)
{
    struct stat status{};
    return ::lstat(QFile::encodeName(path).constData(), &status) == 0 ? status.st_mode & 07777 : 0;
}

} // namespace

TEST(PrivateFolder, IsItsUsersAloneAndSoAreTheMissingOnesAboveIt)
{
    const test::ScratchFolder folder;
    const mode_t before = ::umask(0);
    EXPECT_TRUE(makePrivateFolder(folder.file(u"one/two/three"_qs)));
    ::umask(before);
    for (const QString& made : {u"one"_qs, u"one/two"_qs, u"one/two/three"_qs})
        EXPECT_EQ(modeOf(folder.file(made)), 0700U) << made.toStdString();
}

TEST(PrivateFolder, ThatIsThereStaysAsItIs)
{
    const test::ScratchFolder folder;
    ASSERT_EQ(::mkdir(QFile::encodeName(folder.file(u"mine"_qs)).constData(), 0755), 0);
    EXPECT_TRUE(makePrivateFolder(folder.file(u"mine"_qs)));
    EXPECT_TRUE(makePrivateFolder(folder.file(u"mine/new"_qs)));
    EXPECT_EQ(modeOf(folder.file(u"mine"_qs)), 0755U);
}

TEST(PrivateFolder, IsNotMadeWhereAFileOrALinkToNowhereStands)
{
    const test::ScratchFolder folder;
    folder.write(u"file"_qs, "content");
    EXPECT_FALSE(makePrivateFolder(folder.file(u"file"_qs)));
    EXPECT_FALSE(makePrivateFolder(folder.file(u"file/below"_qs)));
    ASSERT_TRUE(QFile::link(folder.file(u"nowhere"_qs), folder.file(u"link"_qs)));
    EXPECT_FALSE(makePrivateFolder(folder.file(u"link/below"_qs)));
    EXPECT_EQ(folder.read(u"file"_qs), "content");
    EXPECT_FALSE(QFileInfo::exists(folder.file(u"nowhere"_qs)));
}

} // namespace tulvane
