#include <ui/indicator/HUDController.h>
#include <ui/indicator/ScreenLayout.h>

#include <gtest/gtest.h>

namespace tulvane::test {

namespace {

constexpr QSize panel = HUDController::contentSize;

/// A laptop with a task bar below, and a larger display to its right that hangs lower and has a bar above.
const ScreenPlace laptop{{0, 0, 1440, 900}, {0, 0, 1440, 860}};
const ScreenPlace desk{{1440, -200, 2560, 1440}, {1440, -170, 2560, 1410}};

TEST(ScreenLayoutTest, StandsInTheMiddleALittleAboveTheLowerEdge)
{
    // 860 - 72 is where the indicator ends; the panel reaches 28 further down.
    EXPECT_EQ((ScreenLayout{{laptop}, {700, 400}}.panelPlace(panel)), QPoint(720 - 158, 860 - 44 - 104));
}

TEST(ScreenLayoutTest, IsOnTheScreenThatHoldsThePointer)
{
    EXPECT_EQ((ScreenLayout{{laptop, desk}, {1439, 899}}.panelPlace(panel)), QPoint(562, 712));
    EXPECT_EQ((ScreenLayout{{laptop, desk}, {1440, 899}}.panelPlace(panel)),
              QPoint(1440 + 1280 - 158, 1240 - 148));
    // Over its bar the pointer is on the screen, too.
    EXPECT_EQ((ScreenLayout{{laptop, desk}, {3000, -190}}.panelPlace(panel)), QPoint(2562, 1092));
}

TEST(ScreenLayoutTest, APointerThatIsNowhereMeansTheMainScreen)
{
    EXPECT_EQ((ScreenLayout{{laptop, desk}, {-5, 3000}}.panelPlace(panel)), QPoint(562, 712));
    EXPECT_EQ((ScreenLayout{{desk, laptop}, {-5, 3000}}.panelPlace(panel)), QPoint(2562, 1092));
}

TEST(ScreenLayoutTest, WithoutAScreenThereIsNoPlace)
{
    EXPECT_EQ((ScreenLayout{{}, {10, 10}}.panelPlace(panel)), std::nullopt);
}

TEST(ScreenLayoutTest, AnOddWidthRoundsToTheLeftOnEitherSideOfTheOrigin)
{
    const ScreenPlace odd{{0, 0, 1281, 800}, {0, 0, 1281, 800}};
    EXPECT_EQ((ScreenLayout{{odd}, {1, 1}}.panelPlace(panel)->x()), 482);
    const ScreenPlace left{{-1281, 0, 1281, 800}, {-1281, 0, 1281, 800}};
    EXPECT_EQ((ScreenLayout{{left}, {-1, 1}}.panelPlace(panel)->x()), -799);
}

TEST(ScreenLayoutTest, TheDesktopsScreensAreReadMainOneFirst)
{
    const ScreenLayout now = ScreenLayout::current();
    ASSERT_FALSE(now.screens.isEmpty());
    EXPECT_EQ(now.screens.first().frame.topLeft(), QPoint(0, 0));
    EXPECT_TRUE(now.screens.first().frame.contains(now.screens.first().visibleFrame));
}

} // namespace

} // namespace tulvane::test
