#include <stats/StatsPeriod.h>

#include <QList>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace tulvane::test {

namespace {

struct Row {
    StatsPeriod period;
    const char* raw;
    const char* title;
    int days;
    int bars;
};

const QList<Row> table{{StatsPeriod::today, "today", "Today", 1, 14},
                       {StatsPeriod::week, "week", "7 days", 7, 14},
                       {StatsPeriod::month, "month", "30 days", 30, 30},
                       {StatsPeriod::all, "all", "All time", 0, 30}};

TEST(StatsPeriod, EachHasItsFacts)
{
    for (const Row& row : table) {
        EXPECT_EQ(rawValue(row.period), QString::fromUtf8(row.raw));
        EXPECT_EQ(title(row.period), QString::fromUtf8(row.title));
        EXPECT_EQ(englishTitle(row.period), QString::fromUtf8(row.title));
        EXPECT_EQ(daysInPeriod(row.period), row.days) << row.raw;
        EXPECT_EQ(chartLength(row.period), row.bars) << row.raw;
    }
}

TEST(StatsPeriod, AreListedInTheOrderOfThePicker)
{
    EXPECT_THAT(allStatsPeriods, ::testing::ElementsAre(StatsPeriod::today, StatsPeriod::week,
                                                        StatsPeriod::month, StatsPeriod::all));
}

TEST(StatsPeriod, IsFoundByItsRawValueAlone)
{
    for (const Row& row : table)
        EXPECT_EQ(statsPeriodFromRawValue(QString::fromUtf8(row.raw)), row.period);
    for (const char* other : {"", "Week", "7 days", "year"})
        EXPECT_FALSE(statsPeriodFromRawValue(QString::fromUtf8(other))) << other;
}

} // namespace

} // namespace tulvane::test
