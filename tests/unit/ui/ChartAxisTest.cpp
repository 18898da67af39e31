#include <ui/viewmodels/ChartAxis.h>

#include <gmock/gmock.h>

#include <cmath>
#include <limits>

namespace tulvane::test {

namespace {

using testing::ElementsAre;

TEST(ChartAxisTest, HasRoundSteps)
{
    EXPECT_THAT(chartAxis(1).ticks, ElementsAre(0, 1));
    EXPECT_THAT(chartAxis(5).ticks, ElementsAre(0, 1, 2, 3, 4, 5));
    EXPECT_THAT(chartAxis(6).ticks, ElementsAre(0, 2, 4, 6));
    EXPECT_THAT(chartAxis(11).ticks, ElementsAre(0, 5, 10, 15));
    EXPECT_THAT(chartAxis(412).ticks, ElementsAre(0, 100, 200, 300, 400, 500));
    EXPECT_THAT(chartAxis(1000).ticks, ElementsAre(0, 200, 400, 600, 800, 1000));
    EXPECT_THAT(chartAxis(1001).ticks, ElementsAre(0, 500, 1000, 1500));
}

TEST(ChartAxisTest, AChartOfNothingHasAScale)
{
    EXPECT_THAT(chartAxis(0).ticks, ElementsAre(0, 20, 40, 60, 80, 100));
    EXPECT_EQ(chartAxis(-3).top, 100);
}

TEST(ChartAxisTest, NothingExceedsTheTopAndTheStepsAreFew)
{
    for (qint64 most = 1; most < 20000; ++most) {
        const ChartAxis axis = chartAxis(most);
        ASSERT_GE(axis.top, static_cast<double>(most));
        ASSERT_LE(axis.ticks.size(), 6);
        ASSERT_GE(axis.ticks.size(), 2);
        ASSERT_EQ(axis.ticks.last(), axis.top);
        // No more than the highest step stands empty.
        ASSERT_LT(axis.ticks.at(axis.ticks.size() - 2), static_cast<double>(most));
    }
}

TEST(ChartAxisTest, TheLargestCountHasOneToo)
{
    const ChartAxis axis = chartAxis(std::numeric_limits<qint64>::max());
    EXPECT_GE(axis.top, 9.2e18);
    EXPECT_TRUE(std::isfinite(axis.top));
    EXPECT_LE(axis.ticks.size(), 6);
}

} // namespace

} // namespace tulvane::test
