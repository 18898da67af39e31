#include <app/Relaunch.h>
#include <platform/fake/FakeProcesses.h>
#include <support/LogCapture.h>
#include <support/ScratchFolder.h>

#include <QCoreApplication>
#include <QFile>
#include <QProcess>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

using testing::ElementsAre;

namespace tulvane::test {

TEST(RelaunchTest, WaitsForTheProcessAndBecomesTheProgram)
{
    EXPECT_EQ(relaunchCommand(4711, u"/opt/tulvane/bin/tulvane"_qs, {}),
              u"while kill -0 4711 2>/dev/null; do sleep 0.1; done; exec \"/opt/tulvane/bin/tulvane\""_qs);
    EXPECT_EQ(relaunchCommand(1, u"/b/tulvane"_qs, {u"--page"_qs, u"settings"_qs}),
              u"while kill -0 1 2>/dev/null; do sleep 0.1; done; exec \"/b/tulvane\" --page settings"_qs);
}

TEST(RelaunchTest, APathOfAnyCharactersStandsForItself)
{
    const ScratchFolder folder;
    const QString program =
        folder.write(u"a \"b\" $HOME `id` \\ 'c' å ! *"_qs, "#!/bin/sh\necho \"$0|$*\"\n");
    QFile::setPermissions(program, QFile::ReadOwner | QFile::ExeOwner);
    // A process of this number cannot be: the wait is over at once.
    QProcess shell;
    shell.start(u"/bin/sh"_qs,
                {u"-c"_qs, relaunchCommand(2'000'000'000, program, {u"--page"_qs, u"settings"_qs})});
    ASSERT_TRUE(shell.waitForFinished(20000));
    EXPECT_EQ(QString::fromUtf8(shell.readAllStandardOutput()), program + u"|--page settings\n"_qs);
}

TEST(RelaunchTest, TheShellWaitsUntilTheProcessIsGone)
{
    QProcess old;
    old.start(u"/bin/sh"_qs, {u"-c"_qs, u"read line"_qs});
    ASSERT_TRUE(old.waitForStarted());
    QProcess shell;
    shell.start(u"/bin/sh"_qs, {u"-c"_qs, relaunchCommand(old.processId(), u"/bin/true"_qs, {})});
    ASSERT_TRUE(shell.waitForStarted());
    EXPECT_FALSE(shell.waitForFinished(300));
    old.closeWriteChannel();
    ASSERT_TRUE(old.waitForFinished(20000));
    EXPECT_TRUE(shell.waitForFinished(20000));
}

TEST(RelaunchTest, StartsTheShellOnItsOwnAndEnds)
{
    FakeProcesses processes;
    LogCapture log;
    int ends = 0;
    relaunch(processes, u"/b/tulvane"_qs, {u"--page"_qs, u"settings"_qs}, [&] {
        EXPECT_EQ(processes.detached.size(), 1);
        ++ends;
    });
    const QString command =
        relaunchCommand(QCoreApplication::applicationPid(), u"/b/tulvane"_qs, {u"--page"_qs, u"settings"_qs});
    EXPECT_THAT(processes.detached, ElementsAre(FakeProcesses::Command(u"/bin/sh"_qs, {u"-c"_qs, command})));
    EXPECT_EQ(ends, 1);
    EXPECT_TRUE(log.texts("app", QtCriticalMsg).isEmpty());
}

TEST(RelaunchTest, WithoutAShellItEndsAllTheSame)
{
    FakeProcesses processes;
    processes.startFailure = u"No such file or directory"_qs;
    LogCapture log;
    int ends = 0;
    relaunch(processes, u"/b/tulvane"_qs, {}, [&ends] { ++ends; });
    EXPECT_EQ(ends, 1);
    EXPECT_THAT(log.texts("app", QtCriticalMsg),
                ElementsAre(u"Could not schedule relaunch: No such file or directory"_qs));
}

} // namespace tulvane::test
