#include <platform/linux/process/ChildProcesses.h>
#include <support/Await.h>
#include <support/ScratchFolder.h>

#include <gtest/gtest.h>

namespace tulvane {

namespace {

const QString shell = QStringLiteral("/bin/sh");

std::optional<int> runScript(const QString& script, const QStringList& more = {})
{
    ChildProcesses processes;
    return processes.run(shell, QStringList{u"-c"_qs, script, u"name"_qs} + more);
}

} // namespace

TEST(ChildProcesses, PassesArgumentsAsTheyAreAndWaitsForTheEnd)
{
    const test::ScratchFolder folder;
    EXPECT_EQ(runScript(u"sleep 0.1; printf '%s|' \"$@\" > \"$1\""_qs,
                        {folder.file(u"out"_qs), u"two words"_qs, u"$HOME"_qs}),
              0);
    EXPECT_EQ(folder.read(u"out"_qs), (folder.file(u"out"_qs) + u"|two words|$HOME|").toUtf8());
}

TEST(ChildProcesses, WhatItSaysGoesToTheNullDevice)
{
    EXPECT_EQ(
        runScript(
            u"test \"$(readlink /proc/$$/fd/1)\" = /dev/null && test \"$(readlink /proc/$$/fd/2)\" = /dev/null"_qs),
        0);
}

TEST(ChildProcesses, ADetachedOneIsNoChildOfOursAndIsNotWaitedFor)
{
    const test::ScratchFolder folder;
    const QString out = folder.file(u"out"_qs);
    ChildProcesses processes;
    const auto started = processes.startDetached(
        shell, {u"-c"_qs,
                u"until test -e \"$1.go\"; do sleep 0.02; done; ps -o ppid= -p $$ > \"$1.part\"; "_qs +
                    u"mv \"$1.part\" \"$1\""_qs,
                u"name"_qs, out});
    ASSERT_TRUE(started);
    EXPECT_FALSE(QFile::exists(out));
    folder.write(u"out.go"_qs, {});
    ASSERT_TRUE(test::waitUntil([&] { return QFile::exists(out); }));
    EXPECT_NE(folder.read(u"out"_qs).trimmed().toLongLong(), QCoreApplication::applicationPid());
}

} // namespace tulvane
