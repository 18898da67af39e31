#include "IndicatorFixture.h"

namespace tulvane::test {

namespace {

const Phase recording{Phase::Kind::recording, {}};
const Phase idle{};

class HUDControllerTest : public IndicatorFixture {};

TEST_F(HUDControllerTest, IsBuiltWhenItIsFirstShownAndKeptFromThenOn)
{
    m_indicator.setPhase(recording);
    m_indicator.setLevel(0.5F);
    m_indicator.hide(true);
    m_indicator.hide(false);
    EXPECT_EQ(m_indicator.panel(), nullptr);
    EXPECT_EQ(m_made, 0);
    m_indicator.show();
    const QQuickView* const window = m_indicator.panel();
    ASSERT_NE(window, nullptr);
    EXPECT_TRUE(window->isVisible());
    m_indicator.hide(false);
    EXPECT_FALSE(window->isVisible());
    m_indicator.show();
    EXPECT_EQ(m_indicator.panel(), window);
    EXPECT_EQ(m_made, 1);
    EXPECT_EQ(m_panel->preparations(), 1);
}

TEST_F(HUDControllerTest, ItsWindowHasTheContentsSizeAndLetsTheDesktopThrough)
{
    show(recording);
    EXPECT_EQ(m_indicator.panel()->size(), QSize(316, 104));
    EXPECT_EQ(m_indicator.panel()->minimumSize(), QSize(316, 104));
    EXPECT_EQ(m_indicator.panel()->maximumSize(), QSize(316, 104));
    EXPECT_EQ(m_indicator.panel()->color().alpha(), 0);
    EXPECT_GT(m_indicator.panel()->requestedFormat().alphaBufferSize(), 0);
    EXPECT_FALSE(m_indicator.panel()->isActive());
}

TEST_F(HUDControllerTest, FadesInOverAHundredAndFiftyMilliseconds)
{
    show(recording);
    EXPECT_EQ(opacity(), 0);
    advance(75);
    EXPECT_NEAR(opacity(), 0.5, 0.08);
    advance(74);
    EXPECT_LT(opacity(), 1);
    advance(1);
    EXPECT_EQ(opacity(), 1);
    EXPECT_TRUE(isVisible());
}

TEST_F(HUDControllerTest, FadesOutOverTwoHundredMillisecondsAndIsGone)
{
    show(recording);
    advance(150);
    m_indicator.hide(true);
    advance(100);
    EXPECT_TRUE(isVisible());
    EXPECT_NEAR(opacity(), 0.5, 0.08);
    advance(99);
    EXPECT_TRUE(isVisible());
    advance(1);
    EXPECT_FALSE(isVisible());
    EXPECT_EQ(opacity(), 0);
    EXPECT_FALSE(m_indicator.model().isShown());
}

TEST_F(HUDControllerTest, WithoutAnimationItIsGoneAtOnceAlsoInTheMiddleOfAFade)
{
    show(recording);
    advance(40);
    m_indicator.hide(false);
    EXPECT_FALSE(isVisible());
    m_panel->forgetOpacities();
    advance(1000);
    EXPECT_TRUE(m_panel->opacities().isEmpty());

    show(recording);
    advance(150);
    m_indicator.hide(true);
    advance(50);
    m_indicator.hide(false);
    EXPECT_FALSE(isVisible());
    EXPECT_TRUE(m_world.scheduler.pending().empty());
}

TEST_F(HUDControllerTest, AShowDuringAFadeOutBringsItBackInItsNewPlace)
{
    show(recording);
    advance(150);
    m_indicator.hide(true);
    advance(100);
    const double half = opacity();
    m_screens = {{{{100, 0, 1000, 800}, {100, 0, 1000, 800}}}, {200, 200}};
    m_panel->forgetOpacities();
    show(recording);
    EXPECT_EQ(m_indicator.panel()->position(), QPoint(600 - 158, 800 - 148));
    advance(150);
    EXPECT_EQ(opacity(), 1);
    for (const double seen : m_panel->opacities())
        EXPECT_GE(seen, half);
    // The end of the fade that was given up must not take it away.
    advance(1000);
    EXPECT_TRUE(isVisible());
}

TEST_F(HUDControllerTest, AShowWhileItIsVisibleOnlyPlacesIt)
{
    show(recording);
    advance(150);
    m_panel->forgetOpacities();
    const int raises = m_panel->raises();
    m_screens.screens.append({{1440, 0, 1920, 1080}, {1440, 0, 1920, 1040}});
    m_screens.pointer = {2000, 10};
    m_indicator.show();
    EXPECT_EQ(m_indicator.panel()->position(), QPoint(1440 + 960 - 158, 1040 - 148));
    EXPECT_TRUE(m_panel->opacities().isEmpty());
    EXPECT_EQ(m_panel->raises(), raises + 1);
}

TEST_F(HUDControllerTest, WithoutAScreenItKeepsItsPlace)
{
    show(recording);
    const QPoint place = m_indicator.panel()->position();
    m_screens = {};
    show(recording);
    EXPECT_EQ(m_indicator.panel()->position(), place);
}

TEST_F(HUDControllerTest, ASecondHideDoesNotMakeTheFadeLonger)
{
    show(recording);
    advance(150);
    m_indicator.hide(true);
    advance(150);
    m_indicator.hide(true);
    advance(50);
    EXPECT_FALSE(isVisible());
}

TEST_F(HUDControllerTest, WhereNothingIsBlendedItComesAndGoesAtOnceCutToItsOutline)
{
    m_startsBlended = false;
    show(recording);
    EXPECT_EQ(opacity(), 1);
    ASSERT_TRUE(m_panel->outline());
    const QQuickItem& indicator = item("indicator.body");
    EXPECT_EQ(m_panel->outline()->rect,
              QRectF(indicator.x(), indicator.y(), indicator.width(), indicator.height()));
    EXPECT_EQ(m_panel->outline()->radius, 24);
    // The outline follows what the indicator says, without a show in between.
    const double width = m_panel->outline()->rect.width();
    m_indicator.setPhase(Phase::notice(QStringLiteral("Microphone changed – recording cancelled")));
    EXPECT_NE(m_panel->outline()->rect.width(), width);
    EXPECT_EQ(m_panel->outline()->rect.width(), item("indicator.body").width());
    m_indicator.hide(true);
    EXPECT_FALSE(isVisible());
    // A compositor that has come meanwhile.
    m_panel->setBlended(true);
    show(recording);
    EXPECT_FALSE(m_panel->outline());
    EXPECT_EQ(opacity(), 0);
}

TEST_F(HUDControllerTest, WhoWantsNoAnimationsGetsNone)
{
    still();
    show(recording);
    EXPECT_EQ(opacity(), 1);
    m_indicator.hide(true);
    EXPECT_FALSE(isVisible());
}

TEST_F(HUDControllerTest, AfterTheEndNothingIsShownAnyMore)
{
    show(recording);
    m_indicator.close();
    EXPECT_EQ(m_indicator.panel(), nullptr);
    m_indicator.show();
    m_indicator.hide(true);
    m_indicator.setPhase(idle);
    EXPECT_EQ(m_indicator.panel(), nullptr);
    advance(1000);
}

TEST_F(HUDControllerTest, ShowsADictationFromItsFirstMomentToItsLast)
{
    m_world.installModel(m_world.settings.selectedModelID());
    m_world.engine.text = QStringLiteral("Hei.");
    m_world.controller.start();
    UiWorld::settle();
    ASSERT_TRUE(isVisible());
    EXPECT_EQ(texts(), QStringList{QStringLiteral("Listening…")});
    ASSERT_TRUE(m_world.input.push(std::vector<float>(16000, 0.5F)));
    UiWorld::settle();
    EXPECT_GT(m_indicator.model().level(), 0.1F);
    m_world.controller.stop();
    UiWorld::settle();
    EXPECT_EQ(m_indicator.model().level(), 0);
    for (int i = 0; i < 12; ++i) {
        UiWorld::settle();
        advance(500);
    }
    EXPECT_FALSE(isVisible());
    EXPECT_EQ(m_world.session.history().size(), 1);
}

TEST_F(HUDControllerTest, WithoutTheSettingItIsNeitherBuiltNorShownAndGoesAtOnceWhenItIsSwitchedOff)
{
    m_world.settings.showHUD.set(false);
    m_world.controller.showNotice(QStringLiteral("Too short"));
    EXPECT_EQ(m_indicator.panel(), nullptr);
    m_world.settings.showHUD.set(true);
    UiWorld::settle();
    EXPECT_TRUE(isVisible());
    advance(150);
    m_world.settings.showHUD.set(false);
    EXPECT_FALSE(isVisible());
}

TEST_F(HUDControllerTest, ANoticeStaysItsTimeAndANewDictationIsNotCutShortByIt)
{
    m_world.installModel(m_world.settings.selectedModelID());
    m_world.controller.showNotice(QStringLiteral("Too short"));
    UiWorld::settle();
    advance(1000);
    m_world.controller.start();
    UiWorld::settle();
    EXPECT_EQ(texts(), QStringList{QStringLiteral("Listening…")});
    advance(3000);
    EXPECT_TRUE(isVisible());
    EXPECT_EQ(opacity(), 1);
    m_world.controller.showError(QStringLiteral("No microphone is available."));
    advance(2999);
    EXPECT_TRUE(isVisible());
    EXPECT_EQ(opacity(), 1);
    advance(201);
    EXPECT_FALSE(isVisible());
}

TEST_F(HUDControllerTest, TheProgramsOwnIndicatorIsBuiltOnItsFirstShowAndGoesWithTheWindows)
{
    HUDController& own = m_world.ui.indicator();
    EXPECT_EQ(own.panel(), nullptr);
    own.setPhase(recording);
    own.show();
    ASSERT_NE(m_world.panel, nullptr);
    EXPECT_EQ(m_world.panel->preparations(), 1);
    const QRect free = ScreenLayout::current().screens.first().visibleFrame;
    EXPECT_EQ(own.panel()->y() + 104 + 44, free.y() + free.height());
    m_world.ui.detach();
    EXPECT_EQ(own.panel(), nullptr);
    own.show();
    EXPECT_EQ(own.panel(), nullptr);
}

} // namespace

} // namespace tulvane::test
