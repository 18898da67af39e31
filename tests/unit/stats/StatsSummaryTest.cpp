#include "Days.h"

#include <stats/StatsStore.h>
#include <stats/StatsSummary.h>
#include <support/FakeClock.h>
#include <support/ScratchFolder.h>

#include <limits>

namespace tulvane::test {

namespace {

/// A day of March 2025 with one dictation of ten words, unless told otherwise.
DailyStat march(int day, qint64 dictations = 1, qint64 words = 10)
{
    return {inOslo(2025, 3, day), dictations, words, 5 * words, 2.5};
}

StatsSummary over(const QList<DailyStat>& days)
{
    return {days, Calendar(oslo())};
}

class StatsSummaryTest : public ::testing::Test {
protected:
    [[nodiscard]] qint64 streak(const QList<DailyStat>& days) const
    {
        return over(days).currentStreak(m_clock.now());
    }
    [[nodiscard]] PeriodTotals totals(const QList<DailyStat>& days, StatsPeriod period) const
    {
        return over(days).totals(period, m_clock.now());
    }

    FakeClock m_clock{inOslo(2025, 3, 19, 14, 30)}; // a Wednesday
};

TEST_F(StatsSummaryTest, EmptyStoreHasZeros)
{
    for (const StatsPeriod period : allStatsPeriods)
        EXPECT_EQ(totals({}, period), PeriodTotals());
    EXPECT_EQ(streak({}), 0);
    EXPECT_FALSE(over({}).bestDay());
}

TEST_F(StatsSummaryTest, EachPeriodCountsFromItsFirstDay)
{
    // One entry on the first day counted and one on the day before it, for each period.
    const QList<DailyStat> days{{inOslo(2025, 2, 17), 1, 1, 1, 1},
                                {inOslo(2025, 2, 18), 1, 20, 2, 2},
                                march(12, 1, 300),
                                march(13, 1, 4000),
                                march(18, 1, 50000),
                                march(19, 1, 600000)};
    EXPECT_EQ(totals(days, StatsPeriod::today).words, 600000);
    EXPECT_EQ(totals(days, StatsPeriod::week).words, 654000) << "Thursday of last week through today";
    EXPECT_EQ(totals(days, StatsPeriod::month).words, 654320);
    EXPECT_EQ(totals(days, StatsPeriod::all).words, 654321);
}

TEST_F(StatsSummaryTest, SumsEveryCounter)
{
    const QList<DailyStat> days{{inOslo(2025, 3, 18), 2, 30, 400, 5.5},
                                {inOslo(2025, 3, 19), 1, 3, 40, 0.25}};
    EXPECT_EQ(totals(days, StatsPeriod::week), (PeriodTotals{3, 33, 440, 5.75, 2}));
}

TEST_F(StatsSummaryTest, DaysAfterTodayAreCountedIn)
{
    for (const StatsPeriod period : allStatsPeriods)
        EXPECT_EQ(totals({march(25)}, period).words, 10);
}

TEST_F(StatsSummaryTest, DayWithoutDictationsIsNotActiveButItsWordsCount)
{
    const QList<DailyStat> days{march(18), march(19, 0, 7)};
    EXPECT_EQ(totals(days, StatsPeriod::week).activeDays, 1);
    EXPECT_EQ(totals(days, StatsPeriod::week).words, 17);
    EXPECT_EQ(streak(days), 1);
    EXPECT_EQ(streak({march(17), march(18, 0), march(19)}), 1);
}

TEST_F(StatsSummaryTest, PeriodsFollowTheCalendarOverAClockChange)
{
    m_clock.setNow(inOslo(2025, 4, 1, 0, 30)); // two days after a day of 23 hours
    const QList<DailyStat> days{{inOslo(2025, 3, 25), 1, 1, 1, 1}, {inOslo(2025, 3, 26), 1, 20, 1, 1}};
    EXPECT_EQ(totals(days, StatsPeriod::week).words, 20);
    m_clock.setNow(inOslo(2025, 10, 28, 23, 30)); // two days after a day of 25 hours
    const QList<DailyStat> autumn{{inOslo(2025, 10, 21), 1, 1, 1, 1}, {inOslo(2025, 10, 22), 1, 20, 1, 1}};
    EXPECT_EQ(totals(autumn, StatsPeriod::week).words, 20);
}

TEST_F(StatsSummaryTest, SumBeyond64BitsEndsTheProgram)
{
    constexpr qint64 full = std::numeric_limits<qint64>::max();
    for (const DailyStat& day : {DailyStat{inOslo(2025, 3, 18), full, 1, 1, 1},
                                 {inOslo(2025, 3, 18), 1, full, 1, 1},
                                 {inOslo(2025, 3, 18), 1, 1, full, 1}})
        EXPECT_DEATH((void)totals({day, march(19)}, StatsPeriod::all), "more than 64 bits hold");
}

TEST_F(StatsSummaryTest, StreakSurvivesUntilTheDayEnds)
{
    EXPECT_EQ(streak({march(17), march(18)}), 2);
    m_clock.setNow(inOslo(2025, 3, 19, 23, 59, 59));
    EXPECT_EQ(streak({march(17), march(18)}), 2);
    m_clock.setNow(inOslo(2025, 3, 20));
    EXPECT_EQ(streak({march(17), march(18)}), 0);
}

TEST_F(StatsSummaryTest, StreakEndsAtTheFirstGap)
{
    EXPECT_EQ(streak({march(19)}), 1);
    EXPECT_EQ(streak({march(17), march(19)}), 1);
    EXPECT_EQ(streak({march(15), march(16), march(17)}), 0);
    EXPECT_EQ(streak({march(13), march(15), march(16), march(17), march(18), march(19)}), 5);
    EXPECT_EQ(streak({march(19), march(20)}), 1) << "a day to come does not count";
}

TEST_F(StatsSummaryTest, StreakRunsThroughDaysOf23And25Hours)
{
    QList<DailyStat> year;
    for (int day = 0; day < 365; ++day)
        year.append({inOslo(2024, 12, 1).addDays(day), 1, 1, 1, 1});
    m_clock.setNow(inOslo(2024, 12, 1, 0, 5).addDays(364));
    EXPECT_EQ(streak(year), 365);
}

TEST_F(StatsSummaryTest, StreakStepsOverADateThatTheZoneLeftOut)
{
    const Calendar apia(zone("Pacific/Apia"));
    const auto day = [&](const char* moment) { return DailyStat{apia.startOfDay(utc(moment)), 1, 1, 1, 1}; };
    const StatsSummary summary({day("2011-12-29T12:00:00"), day("2011-12-30T12:00:00")}, apia);
    EXPECT_EQ(summary.currentStreak(utc("2011-12-30T13:00:00")), 2);
}

TEST_F(StatsSummaryTest, BestDayHasTheMostWordsAndTheEarlierOfEqualsWins)
{
    EXPECT_EQ(over({march(2, 1, 5), march(3, 1, 50), march(4, 1, 7)}).bestDay(), march(3, 1, 50));
    EXPECT_EQ(over({march(2, 1, 5), march(3, 1, 50), march(4, 9, 50)}).bestDay(), march(3, 1, 50));
    EXPECT_EQ(over({march(2, 0, 0)}).bestDay(), march(2, 0, 0));
}

TEST_F(StatsSummaryTest, DailyWordsRunFromTheOldestDayToToday)
{
    const QList<DailyStat> days{march(15), march(16, 3, 30), march(18), march(20)};
    EXPECT_EQ(over(days).dailyWords(4, m_clock.now()), (QList<DailyStat>{march(16, 3, 30),
                                                                         {inOslo(2025, 3, 17), 0, 0, 0, 0},
                                                                         march(18),
                                                                         {inOslo(2025, 3, 19), 0, 0, 0, 0}}));
    EXPECT_TRUE(over(days).dailyWords(0, m_clock.now()).isEmpty());
}

TEST_F(StatsSummaryTest, DailyWordsHaveEachCalendarDayOnce)
{
    m_clock.setNow(inOslo(2025, 4, 5, 12));
    const QList<DailyStat> bars = over({}).dailyWords(30, m_clock.now());
    ASSERT_EQ(bars.size(), 30);
    for (int i = 0; i < 30; ++i)
        EXPECT_EQ(bars.at(i).date, inOslo(2025, 3, 7).addDays(i));
}

TEST_F(StatsSummaryTest, DayThatStandsTwiceEndsTheProgram)
{
    EXPECT_DEATH((void)over({march(18), march(18)}).dailyWords(14, m_clock.now()), "hold a day twice");
}

TEST_F(StatsSummaryTest, OfAStoreTakesItsDaysAndItsCalendar)
{
    const ScratchFolder folder;
    const Calendar tokyo(zone("Asia/Tokyo"));
    StatsStore store(folder.file(QStringLiteral("statistics.json")), tokyo);
    store.record(QStringLiteral("ett ord"), utc("2025-03-18T16:00:00"), 1); // the 19th in Tokyo
    const StatsSummary summary(store);
    EXPECT_EQ(summary.totals(StatsPeriod::today, utc("2025-03-19T14:59:59")).words, 2);
    EXPECT_EQ(summary.totals(StatsPeriod::today, utc("2025-03-19T15:00:00")).words, 0);
    EXPECT_EQ(summary.currentStreak(utc("2025-03-19T15:00:00")), 1);
    EXPECT_EQ(summary.dailyWords(2, utc("2025-03-19T15:00:00")).first().words, 2);
}

} // namespace

} // namespace tulvane::test
