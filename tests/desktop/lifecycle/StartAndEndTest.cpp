#include "LifeCycleDesktop.h"

#include <support/Await.h>
#include <support/Paths.h>

#include <QFile>

#include <gtest/gtest.h>

namespace tulvane::test {

namespace {

const QString mainWindow = QStringLiteral("Tulvane");

class StartAndEnd : public testing::Test {
protected:
    LifeCycleDesktop here;
};

} // namespace

TEST_F(StartAndEnd, ASecondStartShowsTheWindowAndClosingItQuitsNothing)
{
    here.setUp();
    QProcess& program = here.launch();
    EXPECT_TRUE(here.windowTitles().isEmpty());
    EXPECT_EQ(here.tulvane({}), QStringLiteral("Tulvane is running already.\n"));
    ASSERT_TRUE(here.waitForWindow(mainWindow));
    here.closeWindow();
    ASSERT_TRUE(here.waitForNoWindow());
    EXPECT_TRUE(here.answers());
    EXPECT_EQ(program.state(), QProcess::Running);
    EXPECT_EQ(here.tulvane({QStringLiteral("--page"), QStringLiteral("about")}),
              QStringLiteral("Tulvane is running already.\n"));
    EXPECT_TRUE(here.waitForWindow(mainWindow));
}

TEST_F(StartAndEnd, ASecondStartAtLoginShowsNothing)
{
    here.setUp();
    here.launch();
    EXPECT_EQ(here.tulvane({QStringLiteral("--background")}),
              QStringLiteral("Tulvane is running already.\n"));
    EXPECT_TRUE(here.windowTitles().isEmpty());
}

TEST_F(StartAndEnd, ASecondStartBringsTheWindowBeforeOtherPrograms)
{
    here.setUp();
    here.launch({});
    ASSERT_TRUE(here.waitForWindow(mainWindow));
    here.desktop.start(QStringLiteral("xterm"), {QStringLiteral("-T"), QStringLiteral("other")});
    const auto focused = [this] {
        return here.xdotool({QStringLiteral("getactivewindow"), QStringLiteral("getwindowname")});
    };
    ASSERT_TRUE(waitUntil([&] { return focused() == QStringLiteral("other"); }));
    static_cast<void>(here.tulvane({}));
    EXPECT_TRUE(waitUntil([&] { return focused() == mainWindow; })) << qPrintable(focused());
}

TEST_F(StartAndEnd, TheCommandLineQuitsIt)
{
    here.setUp();
    QProcess& program = here.launch();
    EXPECT_EQ(here.tulvane({QStringLiteral("quit")}), QString());
    // It returns when the program is gone.
    EXPECT_EQ(here.process(), 0);
    ASSERT_TRUE(waitUntil([&] { return program.state() == QProcess::NotRunning; }));
    EXPECT_EQ(program.exitStatus(), QProcess::NormalExit);
    EXPECT_EQ(program.exitCode(), 0);
    EXPECT_EQ(here.tulvane({QStringLiteral("quit")}),
              QStringLiteral("tulvane: Tulvane is not running. (tulvane --background starts it)\n"));
}

TEST_F(StartAndEnd, TheSettingsPageQuitsIt)
{
    here.setUp();
    QProcess& program = here.launch({QStringLiteral("--page"), QStringLiteral("settings")});
    ASSERT_TRUE(here.waitForWindow(mainWindow));
    static_cast<void>(here.focus(QStringLiteral("Quit Tulvane")));
    static_cast<void>(here.xdotool({QStringLiteral("key"), QStringLiteral("Return")}));
    EXPECT_TRUE(waitUntil([&] { return program.state() == QProcess::NotRunning; }));
    EXPECT_EQ(program.exitCode(), 0);
}

TEST_F(StartAndEnd, ASessionManagerBringsItBackInTheBackgroundAndOnce)
{
    const QString id = QStringLiteral("10aa8e0e6000169534862400000012340007_1695348624_123456");
    here.setUp();
    QProcess& program = here.launch({QStringLiteral("-session"), id});
    EXPECT_EQ(here.tulvane({QStringLiteral("-session=") + id}),
              QStringLiteral("Tulvane is running already.\n"));
    EXPECT_EQ(here.tulvane({QStringLiteral("--session"), id}),
              QStringLiteral("Tulvane is running already.\n"));
    EXPECT_EQ(program.state(), QProcess::Running);
    EXPECT_TRUE(here.windowTitles().isEmpty());
}

TEST_F(StartAndEnd, ItsWindowsBelongToItsDesktopEntry)
{
    here.setUp();
    here.launch({});
    ASSERT_TRUE(here.waitForWindow(mainWindow));
    const QString window = here.xdotool({QStringLiteral("search"), QStringLiteral("--onlyvisible"),
                                         QStringLiteral("--name"), QStringLiteral("^Tulvane$")})
                               .section(u'\n', 0, 0);
    const QString seen =
        QString::fromUtf8(here.desktop.run(QStringLiteral("xprop"), {QStringLiteral("-id"), window}));
    const QString name = QStringLiteral("com.dunio.Tulvane");
    QFile entry(sourceFolder() + QStringLiteral("/packaging/linux/") + name + QStringLiteral(".desktop"));
    ASSERT_TRUE(entry.open(QIODevice::ReadOnly));
    const QString text = QString::fromUtf8(entry.readAll());
    const QString named = text.section(QStringLiteral("StartupWMClass="), 1).section(u'\n', 0, 0);
    ASSERT_FALSE(named.isEmpty());
    EXPECT_TRUE(seen.contains(QStringLiteral("WM_CLASS(STRING) = \"tulvane-desktop\", \"%1\"").arg(named)))
        << qPrintable(seen);
}

TEST_F(StartAndEnd, AProgramThatLacksSomethingOpensTheWayThroughIt)
{
    const QString setup = QStringLiteral("Sett opp Tulvane");
    here.launch();
    ASSERT_TRUE(here.waitForWindow(setup));
    EXPECT_FALSE(here.windowTitles().contains(mainWindow));
    here.closeWindow();
    ASSERT_TRUE(here.waitForNoWindow());
    static_cast<void>(here.tulvane({}));
    EXPECT_TRUE(here.waitForWindow(setup));
}

TEST_F(StartAndEnd, AChangeOfTheInterfaceLanguageStartsItAnew)
{
    here.setUp();
    here.writeDomain(QStringLiteral("com.dunio.Tulvane"),
                     R"({"hasCompletedOnboarding": true, "appLanguage": "nb"})");
    QProcess& old = here.launch({QStringLiteral("--page"), QStringLiteral("settings")});
    ASSERT_TRUE(here.waitForWindow(mainWindow));
    const qint64 before = here.process();
    ASSERT_GT(before, 0);
    EXPECT_EQ(here.focus(QStringLiteral("Programspråk")), QStringLiteral("Norsk"));
    static_cast<void>(here.xdotool({QStringLiteral("key"), QStringLiteral("Up")}));
    ASSERT_TRUE(waitUntil([&] { return old.state() == QProcess::NotRunning; }));
    ASSERT_TRUE(waitUntil([&] { return here.process() != 0; }));
    EXPECT_NE(here.process(), before);
    // Back on the page where it was chosen, in the language that was.
    EXPECT_TRUE(here.waitForWindow(mainWindow));
    EXPECT_EQ(here.focus(QStringLiteral("App language")), QStringLiteral("English"));
}

TEST_F(StartAndEnd, EndsInTheMiddleOfARecording)
{
    here.setUp();
    QProcess& program = here.launch();
    static_cast<void>(here.tulvane({QStringLiteral("start")}));
    ASSERT_TRUE(here.waitForPhase(QStringLiteral("recording")));
    ASSERT_EQ(here.sound.openMicrophones(), 1);
    here.quit();
    EXPECT_EQ(program.exitStatus(), QProcess::NormalExit);
    EXPECT_EQ(program.exitCode(), 0);
    EXPECT_TRUE(waitUntil([&] { return here.sound.openMicrophones() == 0; }));
}

} // namespace tulvane::test
