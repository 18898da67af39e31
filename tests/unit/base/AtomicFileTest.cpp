#include <base/AtomicFile.h>
#include <support/ScratchFolder.h>

#include <QDir>

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <thread>
#include <vector>

namespace tulvane {
namespace {

using test::ScratchFolder;

mode_t permissions(const QString& path)
{
    struct stat state{};
    ::stat(QFile::encodeName(path).constData(), &state);
    return state.st_mode & 07777;
}

TEST(AtomicFile, WhatIsWrittenIsReadAndOnlyTheUserMay)
{
    const ScratchFolder folder;
    const QString path = folder.file(u"Åse.json"_qs);
    ASSERT_TRUE(replaceFile(path, "one"));
    EXPECT_EQ(readFile(path, 100).value(), "one");
    EXPECT_EQ(permissions(path), 0600U);
    ASSERT_EQ(::chmod(QFile::encodeName(path).constData(), 0644), 0);
    ASSERT_TRUE(replaceFile(path, "two"));
    EXPECT_EQ(readFile(path, 100).value(), "two");
    EXPECT_EQ(permissions(path), 0600U);
    EXPECT_EQ(QDir(folder.path()).entryList(QDir::Files), QStringList{u"Åse.json"_qs});
}

TEST(AtomicFile, ALeftoverOfAKilledWriterIsUsedUp)
{
    const ScratchFolder folder;
    folder.write(u"a.new"_qs, "half of something much longer");
    ASSERT_TRUE(replaceFile(folder.file(u"a"_qs), "whole"));
    EXPECT_EQ(folder.read(u"a"_qs), "whole");
    EXPECT_FALSE(QFile::exists(folder.file(u"a.new"_qs)));
}

TEST(AtomicFile, ALinkInTheWayIsNotFollowed)
{
    const ScratchFolder folder;
    folder.write(u"precious"_qs, "kept");
    ASSERT_TRUE(QFile::link(folder.file(u"precious"_qs), folder.file(u"a.new"_qs)));
    EXPECT_FALSE(replaceFile(folder.file(u"a"_qs), "x"));
    EXPECT_EQ(folder.read(u"precious"_qs), "kept");
}

TEST(AtomicFile, WritersOfOneFileComeOneAfterTheOther)
{
    const ScratchFolder folder;
    const QString path = folder.file(u"a"_qs);
    std::vector<std::jthread> writers;
    for (const char letter : {'a', 'b', 'c'}) {
        writers.emplace_back([&path, letter] {
            for (int round = 0; round < 20; ++round)
                EXPECT_TRUE(replaceFile(path, QByteArray(20000, letter)));
        });
    }
    writers.clear();
    const QByteArray left = folder.read(u"a"_qs);
    EXPECT_EQ(left, QByteArray(20000, left.at(0)));
    EXPECT_EQ(QDir(folder.path()).entryList(QDir::Files | QDir::Hidden), QStringList{u"a"_qs});
}

TEST(AtomicFile, AMissingFileIsTold)
{
    const ScratchFolder folder;
    for (const QString& name : {u"a"_qs, u"nowhere/a"_qs}) {
        const auto read = readFile(folder.file(name), 10);
        ASSERT_FALSE(read);
        EXPECT_EQ(read.error().kind, FileFault::Kind::missing);
    }
}

TEST(AtomicFile, WhatIsNoFileOfThatSizeIsAnotherFault)
{
    const ScratchFolder folder;
    const QString big = folder.write(u"big"_qs, QByteArray(101, 'x'));
    const QString pipe = folder.file(u"pipe"_qs);
    ASSERT_EQ(::mkfifo(QFile::encodeName(pipe).constData(), 0600), 0);
    for (const QString& path : {big, pipe, folder.path(), u"/dev/zero"_qs}) {
        const auto read = readFile(path, 100);
        ASSERT_FALSE(read) << qPrintable(path);
        EXPECT_EQ(read.error().kind, FileFault::Kind::other);
        EXPECT_FALSE(read.error().reason.isEmpty());
    }
    EXPECT_EQ(readFile(big, 101).value().size(), 101);
}

TEST(AtomicFile, EveryChangeHasItsOwnStamp)
{
    const ScratchFolder folder;
    const QString path = folder.file(u"a"_qs);
    EXPECT_FALSE(fileStamp(path));
    ASSERT_TRUE(replaceFile(path, "one"));
    const auto first = fileStamp(path);
    ASSERT_TRUE(first);
    EXPECT_EQ(fileStamp(path), first);
    ASSERT_TRUE(replaceFile(path, "two"));
    EXPECT_NE(fileStamp(path), first);
}

TEST(AtomicFile, ALinkLeadsToItsTargetWhetherOrNotItExists)
{
    const ScratchFolder folder;
    ASSERT_TRUE(QFile::link(u"b"_qs, folder.file(u"a"_qs)));
    ASSERT_TRUE(QFile::link(u"c"_qs, folder.file(u"b"_qs)));
    EXPECT_EQ(linkTarget(folder.file(u"a"_qs)), folder.file(u"c"_qs));
    EXPECT_EQ(linkTarget(folder.file(u"plain"_qs)), folder.file(u"plain"_qs));
    ASSERT_TRUE(QFile::link(u"round"_qs, folder.file(u"round"_qs)));
    EXPECT_EQ(linkTarget(folder.file(u"round"_qs)), folder.file(u"round"_qs)) << "a circle comes to an end";
}

} // namespace
} // namespace tulvane
