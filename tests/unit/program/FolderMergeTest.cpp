#include <app/program/FolderMerge.h>
#include <support/Folders.h>
#include <support/ScratchFolder.h>

#include <QTemporaryDir>

#include <gtest/gtest.h>
#include <sys/stat.h>

namespace tulvane::test {

namespace {

std::filesystem::path path(const QString& file)
{
    return file.toStdString();
}

dev_t diskOf(const QString& folder)
{
    struct stat info = {};
    return ::stat(qPrintable(folder), &info) == 0 ? info.st_dev : 0;
}

class FolderMergeTest : public testing::Test {
protected:
    QString oldFile(const QString& name) const { return folder.file(u"old/"_qs + name); }
    QString newFile(const QString& name) const { return folder.file(u"new/"_qs + name); }
    Result<void, QString> merge() const
    {
        return mergeFolder(path(folder.file(u"old"_qs)), path(folder.file(u"new"_qs)), "Models");
    }
    ScratchFolder folder;
};

} // namespace

TEST_F(FolderMergeTest, WhatIsMissingMovesAndWhatIsThereStays)
{
    put(oldFile(u"both"_qs), "old");
    put(oldFile(u"mine"_qs), "old");
    put(oldFile(u".hidden"_qs), "old");
    put(oldFile(u"deep/er/file"_qs), "old");
    put(newFile(u"both"_qs), "new");
    put(newFile(u"own"_qs), "new");
    ASSERT_TRUE(merge());
    EXPECT_EQ(everythingIn(folder.path()),
              QStringList({u"new"_qs, u"new/.hidden"_qs, u"new/both"_qs, u"new/deep"_qs, u"new/deep/er"_qs,
                           u"new/deep/er/file"_qs, u"new/mine"_qs, u"new/own"_qs}));
    EXPECT_EQ(contentOf(newFile(u"both"_qs)), "new");
    EXPECT_EQ(contentOf(newFile(u"mine"_qs)), "old");
}

TEST_F(FolderMergeTest, OnlyTheInnerFolderIsMergedItemByItem)
{
    put(oldFile(u"Models/a.bin"_qs), "old");
    put(oldFile(u"Models/b.bin"_qs), "old");
    put(oldFile(u"Models/Models/c"_qs), "old");
    put(oldFile(u"Other/d"_qs), "old");
    put(newFile(u"Models/a.bin"_qs), "new");
    put(newFile(u"Models/Models/e"_qs), "new");
    put(newFile(u"Other/f"_qs), "new");
    ASSERT_TRUE(merge());
    EXPECT_EQ(
        everythingIn(folder.path()),
        QStringList({u"new"_qs, u"new/Models"_qs, u"new/Models/Models"_qs, u"new/Models/Models/e"_qs,
                     u"new/Models/a.bin"_qs, u"new/Models/b.bin"_qs, u"new/Other"_qs, u"new/Other/f"_qs}));
    EXPECT_EQ(contentOf(newFile(u"Models/a.bin"_qs)), "new");
}

TEST_F(FolderMergeTest, AnInnerFolderThatOnlyTheOldOneHasMovesWhole)
{
    put(oldFile(u"Models/a.bin"_qs), "old");
    QDir().mkpath(folder.file(u"new"_qs));
    ASSERT_TRUE(merge());
    EXPECT_EQ(contentOf(newFile(u"Models/a.bin"_qs)), "old");
}

TEST_F(FolderMergeTest, AFileInTheInnerFoldersPlaceStays)
{
    put(oldFile(u"Models/a.bin"_qs), "old");
    put(newFile(u"Models"_qs), "new");
    ASSERT_TRUE(merge());
    EXPECT_EQ(everythingIn(folder.path()), QStringList({u"new"_qs, u"new/Models"_qs}));
    EXPECT_EQ(contentOf(newFile(u"Models"_qs)), "new");
}

TEST_F(FolderMergeTest, ALinkThatLeadsNowhereIsThereAllTheSame)
{
    put(oldFile(u"a"_qs), "old");
    QDir().mkpath(folder.file(u"new"_qs));
    ASSERT_TRUE(QFile::link(u"/nowhere/at/all"_qs, newFile(u"a"_qs)));
    ASSERT_TRUE(merge());
    EXPECT_TRUE(QFileInfo(newFile(u"a"_qs)).isSymLink());
}

TEST_F(FolderMergeTest, AnOldFolderElsewhereGivesItsItemsAndOnlyTheLinkGoes)
{
    put(folder.file(u"elsewhere/a"_qs), "old");
    put(folder.file(u"elsewhere/b"_qs), "old");
    put(newFile(u"b"_qs), "new");
    ASSERT_TRUE(QFile::link(folder.file(u"elsewhere"_qs), folder.file(u"old"_qs)));
    ASSERT_TRUE(merge());
    EXPECT_EQ(contentOf(newFile(u"a"_qs)), "old");
    EXPECT_FALSE(QFileInfo(folder.file(u"old"_qs)).isSymLink());
    EXPECT_TRUE(QFile::exists(folder.file(u"elsewhere/b"_qs)));
}

TEST_F(FolderMergeTest, AFailureStopsItNamesThePathAndKeepsTheOldFolder)
{
    put(oldFile(u"a"_qs), "old");
    put(folder.file(u"new"_qs), "a file");
    const auto merged = merge();
    ASSERT_FALSE(merged);
    EXPECT_TRUE(merged.error().startsWith(oldFile(u"a"_qs) + u": "_qs)) << qPrintable(merged.error());
    EXPECT_EQ(contentOf(oldFile(u"a"_qs)), "old");
    EXPECT_EQ(contentOf(folder.file(u"new"_qs)), "a file");
}

TEST(MoveItemTest, AnItemGoesToAnotherDiskWhole)
{
    QTemporaryDir here;
    QTemporaryDir there(u"/dev/shm/moveXXXXXX"_qs);
    if (!there.isValid() || diskOf(here.path()) == diskOf(there.path()))
        GTEST_SKIP() << "there is one disk only";
    put(here.filePath(u"from/inner/a.bin"_qs), QByteArray(300'000, 'm'));
    ASSERT_TRUE(QFile::link(u"inner/a.bin"_qs, here.filePath(u"from/link"_qs)));
    ASSERT_TRUE(moveItem(path(here.filePath(u"from"_qs)), path(there.filePath(u"to"_qs))));
    EXPECT_EQ(contentOf(there.filePath(u"to/inner/a.bin"_qs)), QByteArray(300'000, 'm'));
    EXPECT_TRUE(QFileInfo(there.filePath(u"to/link"_qs)).isSymLink());
    EXPECT_EQ(everythingIn(here.path()), QStringList());
    EXPECT_EQ(QDir(there.path()).entryList(QDir::AllEntries | QDir::NoDotAndDotDot), QStringList(u"to"_qs));
}

TEST(MoveItemTest, AnItemThatCannotMoveStaysWhereItIs)
{
    ScratchFolder folder;
    put(folder.file(u"from"_qs));
    const auto moved = moveItem(path(folder.file(u"from"_qs)), path(folder.file(u"no/such/place"_qs)));
    ASSERT_FALSE(moved);
    EXPECT_TRUE(QFile::exists(folder.file(u"from"_qs)));
}

} // namespace tulvane::test
