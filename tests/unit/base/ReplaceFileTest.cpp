#include <base/AtomicFile.h>
#include <support/FileSizeLimit.h>
#include <support/ScratchFolder.h>

#include <QFileInfo>

#include <gtest/gtest.h>

namespace tulvane::test {

namespace {

TEST(ReplaceFile, MakesTheFoldersAndAFileOfTheOwnersOwn)
{
    const ScratchFolder folder;
    const QString path = folder.file(QStringLiteral("a/b/statistics.json"));
    ASSERT_TRUE(replaceFile(path, "one"));
    EXPECT_EQ(folder.read(QStringLiteral("a/b/statistics.json")), "one");
    constexpr auto others =
        QFileDevice::ReadGroup | QFileDevice::WriteGroup | QFileDevice::ReadOther | QFileDevice::WriteOther;
    EXPECT_FALSE(QFileInfo(path).permissions() & others);
}

TEST(ReplaceFile, LeavesNothingBesideTheFile)
{
    const ScratchFolder folder;
    ASSERT_TRUE(replaceFile(folder.file(QStringLiteral("s.json")), "one"));
    ASSERT_TRUE(replaceFile(folder.file(QStringLiteral("s.json")), "two"));
    EXPECT_EQ(folder.read(QStringLiteral("s.json")), "two");
    EXPECT_EQ(QDir(folder.path()).entryList(QDir::NoDotAndDotDot | QDir::AllEntries | QDir::Hidden),
              QStringList{QStringLiteral("s.json")});
}

TEST(ReplaceFile, WritesThroughASymbolicLink)
{
    const ScratchFolder folder;
    folder.write(QStringLiteral("target"), "old");
    ASSERT_TRUE(QFile::link(folder.file(QStringLiteral("target")), folder.file(QStringLiteral("link"))));
    ASSERT_TRUE(replaceFile(folder.file(QStringLiteral("link")), "new"));
    EXPECT_TRUE(QFileInfo(folder.file(QStringLiteral("link"))).isSymLink());
    EXPECT_EQ(folder.read(QStringLiteral("target")), "new");
}

TEST(ReplaceFile, SaysWhyItCannot)
{
    const ScratchFolder folder;
    folder.write(QStringLiteral("plain"), "x");
    const auto inFile = replaceFile(folder.file(QStringLiteral("plain/statistics.json")), "one");
    ASSERT_FALSE(inFile);
    EXPECT_EQ(inFile.error(), QStringLiteral("Not a directory"));
    ASSERT_TRUE(QDir(folder.path()).mkdir(QStringLiteral("folder")));
    const auto ontoFolder = replaceFile(folder.file(QStringLiteral("folder")), "one");
    ASSERT_FALSE(ontoFolder);
    EXPECT_FALSE(ontoFolder.error().isEmpty());
}

TEST(ReplaceFile, FullDiskLeavesTheOldFileWhole)
{
    // Cut inside the library's buffer, beyond it, and at the first byte.
    for (const auto& [size, limit] : {std::pair(100, 40), {60000, 20000}, {60000, 59999}, {100, 0}}) {
        const ScratchFolder folder;
        const QString path = folder.write(QStringLiteral("s.json"), "old");
        {
            const FileSizeLimit full(static_cast<unsigned>(limit));
            const auto replaced = replaceFile(path, QByteArray(size, 'x'));
            ASSERT_FALSE(replaced) << size << " bytes, " << limit << " fit";
            EXPECT_EQ(replaced.error(), QStringLiteral("File too large"));
        }
        EXPECT_EQ(folder.read(QStringLiteral("s.json")), "old");
        EXPECT_EQ(QDir(folder.path()).entryList(QDir::Files | QDir::Hidden).size(), 1);
        EXPECT_TRUE(replaceFile(path, QByteArray(size, 'x')));
        EXPECT_EQ(folder.read(QStringLiteral("s.json")), QByteArray(size, 'x'));
    }
}

} // namespace

} // namespace tulvane::test
