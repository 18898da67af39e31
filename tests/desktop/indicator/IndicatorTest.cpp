#include "IndicatorOnDesktop.h"

namespace tulvane::test {

namespace {

using namespace std::chrono_literals;

class IndicatorTest : public IndicatorOnDesktop {};

TEST_F(IndicatorTest, TheProgramInFrontKeepsTheFocusHoweverOftenTheIndicatorIsShown)
{
    m_here.launch();
    m_here.openEntry();
    ASSERT_TRUE(waitUntil([&] { return m_view.active() != 0; }));
    const xcb_window_t active = m_view.active();
    const xcb_window_t focus = m_view.focus();
    for (int i = 0; i < 100; ++i) {
        ask("start");
        ASSERT_TRUE(waitForIndicator()) << i;
        EXPECT_EQ(m_view.active(), active) << i;
        EXPECT_EQ(m_view.focus(), focus) << i;
        ask("cancel");
        ASSERT_TRUE(waitForNoIndicator()) << i;
        ASSERT_EQ(m_view.active(), active) << i;
        ASSERT_EQ(m_view.focus(), focus) << i;
    }
}

TEST_F(IndicatorTest, IsNotThereBeforeTheFirstDictationAndAfterTheLast)
{
    m_here.launch();
    EXPECT_FALSE(indicator());
    ask("start");
    EXPECT_TRUE(waitForIndicator());
    ask("cancel");
    EXPECT_TRUE(waitForNoIndicator());
    ask("settings set showHUD false");
    ask("start");
    EXPECT_FALSE(waitUntil([&] { return indicator().has_value(); }, 400ms));
    ask("settings set showHUD true");
    EXPECT_TRUE(waitForIndicator());
}

TEST_F(IndicatorTest, ClicksReachWhatLiesBelow)
{
    m_here.launch();
    const xcb_window_t film = openFilm();
    ask("start");
    ASSERT_TRUE(waitForIndicator());
    const QPoint middle = m_view.place(*indicator()).center();
    for (const QPoint offset : {QPoint(0, 0), QPoint(-40, 4), QPoint(0, -50), QPoint(150, 50)}) {
        const QPoint at = middle + offset;
        m_here.desktop.run(QStringLiteral("xdotool"),
                           {QStringLiteral("mousemove"), QString::number(at.x()), QString::number(at.y()),
                            QStringLiteral("click"), QStringLiteral("1")});
        int clicks = 0;
        EXPECT_TRUE(waitUntil([&] { return (clicks += m_view.clicks(film)) == 1; }));
    }
    EXPECT_EQ(m_here.status()[QStringLiteral("phase")], QStringLiteral("recording"));
}

TEST_F(IndicatorTest, IsAboveAFullScreenProgramAlsoOneThatComesLater)
{
    m_here.launch();
    openFilm();
    ask("start");
    ASSERT_TRUE(waitForIndicator());
    EXPECT_EQ(m_view.stack().last(), *indicator());
    openFilm(0x884422);
    EXPECT_TRUE(waitUntil([&] { return m_view.stack().last() == indicator(); }));
}

TEST_F(IndicatorTest, StandsInTheMiddleAboveTheLowerEdgeOfWhatIsFree)
{
    m_here.launch();
    ask("start");
    ASSERT_TRUE(waitForIndicator());
    const QSize screen = m_view.size();
    EXPECT_EQ(m_view.place(*indicator()),
              QRect((screen.width() - 316) / 2, screen.height() - 44 - 104, 316, 104));
    ask("cancel");
    ASSERT_TRUE(waitForNoIndicator());

    // A task bar takes its part of the screen.
    m_here.desktop.start(QStringLiteral("trayer"),
                         words("--edge bottom --SetDockType true --SetPartialStrut true --widthtype percent "
                               "--width 100 --heighttype pixel --height 48"));
    const auto workArea = [&] { return m_view.numbers(m_view.root(), "_NET_WORKAREA"); };
    ASSERT_TRUE(waitUntil([&] { return workArea().value(3) + workArea().value(1) == 752; }));
    ASSERT_TRUE(waitUntil([&] {
        ask("start");
        const bool isPlaced = waitForIndicator() && m_view.place(*indicator()).bottom() + 1 == 752 - 44;
        ask("cancel");
        return isPlaced && waitForNoIndicator();
    }));
}

TEST_F(IndicatorTest, AMicrophoneThatGoesWhileRecordingIsTold)
{
    m_here.launch();
    ask("start");
    ASSERT_TRUE(waitForIndicator());
    const QStringList modules = m_here.sound.control(words("list short modules")).split(u'\n');
    const QString microphone = modules.filter(QStringLiteral("module-remap-source")).value(0);
    m_here.sound.control({QStringLiteral("unload-module"), microphone.section(u'\t', 0, 0)});
    EXPECT_TRUE(waitUntil(
        [&] { return message() == QString::fromUtf8("Microphone changed – recording cancelled"); }));
    EXPECT_TRUE(indicator());
    EXPECT_TRUE(waitForNoIndicator());
    EXPECT_EQ(message(), QString());
}

TEST_F(IndicatorTest, ARecordingThatReachesItsLongestTimeEndsAndSaysWhatCameOfIt)
{
    m_here.launch();
    ask("settings set maxRecordingSeconds 10");
    ask("start");
    ASSERT_TRUE(waitForIndicator());
    EXPECT_TRUE(waitUntil([&] { return message() == u"Nothing heard"; }, 15s));
    EXPECT_TRUE(indicator());
    EXPECT_TRUE(waitForNoIndicator());
}

TEST_F(IndicatorTest, ANewDictationIsNotCutShortByTheNoticeOfTheOneBefore)
{
    m_here.launch();
    ask("start");
    ask("cancel");
    ask("start");
    ask("stop"); // too soon for anything to have been said
    ASSERT_TRUE(waitUntil([&] { return message() == u"Too short" || message() == u"Nothing heard"; }));
    ask("start");
    ASSERT_TRUE(waitForIndicator());
    ASSERT_TRUE(m_here.waitForPhase(QStringLiteral("recording")));
    // Longer than a notice and its fade last.
    EXPECT_FALSE(waitUntil([&] { return !isOpaque(); }, 2500ms));
    EXPECT_EQ(m_here.status()[QStringLiteral("phase")], QStringLiteral("recording"));
}

} // namespace

} // namespace tulvane::test
