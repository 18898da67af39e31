#include "LifeCycleDesktop.h"

#include <support/Await.h>
#include <support/Speech.h>
#include <support/tray/TrayHost.h>

#include <gtest/gtest.h>

namespace tulvane::test {

namespace {

using namespace std::chrono_literals;

class TrayMenu : public testing::Test {
protected:
    /// The program with its icon in the bar.
    void start()
    {
        here.setUp();
        here.launch();
        bar.waitForIcon();
        ASSERT_TRUE(bar.waitForLine(QStringLiteral("Ready · Alt+Space")));
    }
    bool isChosen(const QString& label) { return bar.line(label)[QStringLiteral("on")].toBool(); }
    QString setting(const char* key) const
    {
        return here.tulvane({QStringLiteral("settings"), QStringLiteral("get"), QString::fromLatin1(key)})
            .trimmed();
    }
    /// What a click on the line opens, told by a text that is on that page alone.
    void expectPage(const QString& label, const QString& text)
    {
        bar.click(label);
        EXPECT_TRUE(here.waitForWindow(QStringLiteral("Tulvane")));
        EXPECT_TRUE(here.shows(text)) << qPrintable(label);
    }
    void dictate(const char* text)
    {
        bar.click(QStringLiteral("Start dictation"));
        ASSERT_TRUE(here.waitForPhase(QStringLiteral("recording")));
        const auto player =
            here.sound.play(speakSentence(QString::fromUtf8(text), QStringLiteral("nb")), 16000);
        ASSERT_TRUE(waitUntil([&] { return player->state() == QProcess::NotRunning; }));
        // What was played last is still on its way through the server's buffers.
        runEventLoopFor(500ms);
        bar.click(QStringLiteral("Stop dictation"));
    }

    LifeCycleDesktop here;
    TrayHost bar{here.desktop};
};

} // namespace

TEST_F(TrayMenu, HasEveryLineInItsPlace)
{
    start();
    EXPECT_EQ(
        bar.labels(),
        QStringList({QStringLiteral("Ready · Alt+Space"), QStringLiteral("-"),
                     QStringLiteral("Start dictation"), QStringLiteral("-"), QStringLiteral("Hotkey mode"),
                     QStringLiteral("Language"), QStringLiteral("-"), QStringLiteral("Open Tulvane"),
                     QStringLiteral("Statistics"), QStringLiteral("Settings"), QStringLiteral("Setup guide"),
                     QStringLiteral("-"), QStringLiteral("Quit Tulvane")}));
    EXPECT_FALSE(bar.line(QStringLiteral("Ready · Alt+Space"))[QStringLiteral("enabled")].toBool());
    EXPECT_TRUE(bar.line(QStringLiteral("Quit Tulvane"))[QStringLiteral("enabled")].toBool());
    EXPECT_EQ(bar.line(QStringLiteral("English"))[QStringLiteral("toggle")], QStringLiteral("radio"));
}

TEST_F(TrayMenu, TheIconIsAPictureThatFollowsThePhase)
{
    start();
    const QJsonObject idle = bar.icon();
    EXPECT_FALSE(idle[QStringLiteral("IconPixmap")].toArray().isEmpty());
    EXPECT_EQ(idle[QStringLiteral("Status")], QStringLiteral("Active"));
    EXPECT_EQ(idle[QStringLiteral("ToolTip")].toArray().at(2), QStringLiteral("Tulvane – Ready · Alt+Space"));
    bar.click(QStringLiteral("Start dictation"));
    ASSERT_TRUE(bar.waitForLine(QStringLiteral("Listening…")));
    EXPECT_NE(bar.icon()[QStringLiteral("IconPixmap")], idle[QStringLiteral("IconPixmap")]);
    bar.click(QStringLiteral("Cancel recording"));
    ASSERT_TRUE(bar.waitForLine(QStringLiteral("Ready · Alt+Space")));
    EXPECT_EQ(bar.icon()[QStringLiteral("IconPixmap")], idle[QStringLiteral("IconPixmap")]);
}

TEST_F(TrayMenu, DictatesAndKeepsWhatWasSaidForTheClipboard)
{
    start();
    dictate("Hei, dette er en test.");
    ASSERT_TRUE(bar.waitForLine(QStringLiteral("Hei, dette er en test.")));
    ASSERT_TRUE(here.waitForPhase(QStringLiteral("idle")));
    EXPECT_TRUE(bar.labels().at(1).startsWith(QStringLiteral("Today: 5 words · ~")))
        << qPrintable(bar.labels().join(u'|'));
    bar.click(QStringLiteral("Hei, dette er en test."));
    const auto clipboard = [this] {
        QProcess process;
        process.setProcessEnvironment(here.desktop.environment());
        process.start(QStringLiteral("xclip"),
                      {QStringLiteral("-o"), QStringLiteral("-selection"), QStringLiteral("clipboard")});
        process.waitForFinished(5000);
        return QString::fromUtf8(process.readAllStandardOutput());
    };
    EXPECT_TRUE(waitUntil([&] { return clipboard() == QStringLiteral("Hei, dette er en test. "); }))
        << qPrintable(clipboard());
}

TEST_F(TrayMenu, CancelsARecording)
{
    start();
    bar.click(QStringLiteral("Start dictation"));
    ASSERT_TRUE(bar.waitForLine(QStringLiteral("Cancel recording")));
    EXPECT_EQ(here.sound.openMicrophones(), 1);
    bar.click(QStringLiteral("Cancel recording"));
    EXPECT_TRUE(here.waitForPhase(QStringLiteral("idle")));
    EXPECT_TRUE(waitUntil([&] { return here.sound.openMicrophones() == 0; }));
    EXPECT_EQ(here.status()[QStringLiteral("historyCount")], 0);
}

TEST_F(TrayMenu, SwitchesTheHotkeyModeAndTheLanguage)
{
    start();
    EXPECT_TRUE(isChosen(QStringLiteral("Toggle (press to start, press to stop)")));
    for (const auto& [label, value] :
         {std::pair{"Hold to talk", "hold"}, std::pair{"Hold to talk, tap to toggle", "hybrid"},
          std::pair{"Toggle (press to start, press to stop)", "toggle"}}) {
        bar.click(QString::fromLatin1(label));
        EXPECT_TRUE(waitUntil([&] { return setting("hotkeyMode") == QString::fromLatin1(value); })) << label;
        EXPECT_TRUE(isChosen(QString::fromLatin1(label)));
    }
    EXPECT_FALSE(isChosen(QStringLiteral("Hold to talk")));
    for (const auto& [label, value] : {std::pair{"English", "en"}, std::pair{"Norsk nynorsk", "nn"},
                                       std::pair{"Auto-detect", "auto"}, std::pair{"Norsk bokmål", "no"}}) {
        bar.click(QString::fromUtf8(label));
        EXPECT_TRUE(waitUntil([&] { return setting("language") == QString::fromLatin1(value); })) << label;
        EXPECT_TRUE(isChosen(QString::fromUtf8(label)));
    }
    // And what is changed elsewhere is shown here.
    static_cast<void>(here.tulvane({QStringLiteral("settings"), QStringLiteral("set"),
                                    QStringLiteral("language"), QStringLiteral("en")}));
    EXPECT_TRUE(waitUntil([&] { return isChosen(QStringLiteral("English")); }));
    EXPECT_FALSE(isChosen(QStringLiteral("Norsk bokmål")));
}

TEST_F(TrayMenu, LeadsIntoTheWindowsPages)
{
    start();
    EXPECT_TRUE(here.windowTitles().isEmpty());
    expectPage(QStringLiteral("Settings"), QStringLiteral("How you start and stop dictation."));
    expectPage(QStringLiteral("Statistics"), QStringLiteral("No dictations yet"));
    expectPage(QStringLiteral("Open Tulvane"), QStringLiteral("Get the most out of Tulvane"));
    bar.click(QStringLiteral("Setup guide"));
    EXPECT_TRUE(here.waitForWindow(QStringLiteral("Set up Tulvane")));
}

TEST_F(TrayMenu, QuitsAlsoInTheMiddleOfARecording)
{
    start();
    bar.click(QStringLiteral("Start dictation"));
    ASSERT_TRUE(here.waitForPhase(QStringLiteral("recording")));
    bar.click(QStringLiteral("Quit Tulvane"));
    ASSERT_TRUE(waitUntil([&] { return here.program().state() == QProcess::NotRunning; }));
    EXPECT_EQ(here.program().exitStatus(), QProcess::NormalExit);
    EXPECT_EQ(here.program().exitCode(), 0);
    bar.waitUntilGone();
    EXPECT_TRUE(waitUntil([&] { return here.sound.openMicrophones() == 0; }));
}

TEST_F(TrayMenu, TheBarMayComeBack)
{
    start();
    bar.kill();
    EXPECT_TRUE(here.answers());
    TrayHost next(here.desktop);
    next.waitForIcon();
    EXPECT_TRUE(next.waitForLine(QStringLiteral("Ready · Alt+Space")));
}

TEST_F(TrayMenu, ABarThatAsksUsOpensOurOwnMenu)
{
    start();
    bar.activate();
    // A window of ours that is no window to the user.
    EXPECT_TRUE(waitUntil([&] {
        return !here.xdotool({QStringLiteral("search"), QStringLiteral("--onlyvisible"),
                              QStringLiteral("--class"), QStringLiteral("tulvane")})
                    .isEmpty();
    }));
    static_cast<void>(here.xdotool({QStringLiteral("key"), QStringLiteral("Up"), QStringLiteral("Return")}));
    EXPECT_TRUE(waitUntil([&] { return here.program().state() == QProcess::NotRunning; }));
}

TEST(TrayLater, ABarThatComesAfterTheProgramIsUsed)
{
    LifeCycleDesktop here;
    here.setUp();
    here.launch();
    EXPECT_TRUE(here.windowTitles().isEmpty());
    TrayHost bar(here.desktop);
    bar.waitForIcon();
    EXPECT_TRUE(bar.waitForLine(QStringLiteral("Ready · Alt+Space")));
}

TEST(TrayLater, ABookOfIconsIsNoBarYet)
{
    LifeCycleDesktop here;
    TrayHost bar(here.desktop, false);
    here.setUp();
    here.launch();
    bar.addHost();
    bar.waitForIcon();
    EXPECT_TRUE(bar.waitForLine(QStringLiteral("Ready · Alt+Space")));
}

TEST(TrayNever, WithoutATrayTheProgramRunsAndSaysNothing)
{
    LifeCycleDesktop here;
    here.setUp();
    here.launch();
    EXPECT_TRUE(here.waitForPhase(QStringLiteral("idle")));
    const QString log = here.log();
    EXPECT_FALSE(log.contains(QStringLiteral("ray"))) << qPrintable(log);
    EXPECT_EQ(here.tulvane({}), QStringLiteral("Tulvane is running already.\n"));
    EXPECT_TRUE(here.waitForWindow(QStringLiteral("Tulvane")));
}

} // namespace tulvane::test
