#include <platform/linux/workspace/ChildProcesses.h>
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

TEST(ChildProcesses, AnswersTheExitStatus)
{
    EXPECT_EQ(runScript(u"exit 0"_qs), 0);
    EXPECT_EQ(runScript(u"exit 64"_qs), 64);
}

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

TEST(ChildProcesses, ACrashIsMinusOneAndNoProgramIsNothing)
{
    EXPECT_EQ(runScript(u"kill -KILL $$"_qs), -1);
    ChildProcesses processes;
    EXPECT_EQ(processes.run(u"/nowhere/tccutil"_qs, {}), std::nullopt);
}

} // namespace tulvane
