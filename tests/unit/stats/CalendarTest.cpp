#include "Days.h"

#include <stats/Calendar.h>

namespace tulvane::test {

namespace {

class CalendarTest : public ::testing::Test {
protected:
    void TearDown() override { qunsetenv("TZ"); }

    Calendar m_oslo{oslo()};
};

TEST_F(CalendarTest, DayBeginsAtLocalMidnight)
{
    EXPECT_EQ(m_oslo.startOfDay(utc("2025-03-14T23:00:00")), utc("2025-03-14T23:00:00"));
    EXPECT_EQ(m_oslo.startOfDay(utc("2025-03-14T22:59:59")), utc("2025-03-13T23:00:00"));
    EXPECT_EQ(m_oslo.startOfDay(inOslo(2025, 3, 15, 23, 59, 59)), inOslo(2025, 3, 15));
}

TEST_F(CalendarTest, MomentsGivenInAnotherZoneBelongToTheCalendarsDay)
{
    const QDateTime moment(QDate(2025, 3, 14), QTime(19, 30), zone("America/New_York"));
    EXPECT_EQ(m_oslo.dateOf(moment), QDate(2025, 3, 15));
    EXPECT_EQ(m_oslo.startOfDay(moment), inOslo(2025, 3, 15));
}

TEST_F(CalendarTest, DaysOf23And25HoursAreOneDay)
{
    const QDateTime spring = inOslo(2025, 3, 30);
    EXPECT_EQ(spring.secsTo(inOslo(2025, 3, 31)), 23 * 3600);
    EXPECT_EQ(m_oslo.startOfDay(spring.addSecs((23 * 3600) - 1)), spring);
    EXPECT_EQ(m_oslo.startOfDay(spring.addSecs(23 * 3600)), inOslo(2025, 3, 31));

    const QDateTime autumn = inOslo(2025, 10, 26);
    EXPECT_EQ(autumn.secsTo(inOslo(2025, 10, 27)), 25 * 3600);
    EXPECT_EQ(m_oslo.startOfDay(autumn.addSecs((25 * 3600) - 1)), autumn);
    EXPECT_EQ(m_oslo.startOfDay(autumn.addSecs(25 * 3600)), inOslo(2025, 10, 27));
}

TEST_F(CalendarTest, GoingBackCountsCalendarDaysNotHours)
{
    EXPECT_EQ(m_oslo.daysBefore(inOslo(2025, 3, 31), 1), inOslo(2025, 3, 30));
    EXPECT_EQ(m_oslo.daysBefore(inOslo(2025, 10, 27), 1), inOslo(2025, 10, 26));
    EXPECT_EQ(m_oslo.daysBefore(inOslo(2025, 4, 3), 29), inOslo(2025, 3, 5));
    EXPECT_EQ(m_oslo.daysBefore(inOslo(2025, 4, 3), 0), inOslo(2025, 4, 3));
}

TEST_F(CalendarTest, DayWithoutMidnightBeginsWhenTheClockHasJumped)
{
    const Calendar beirut(zone("Asia/Beirut")); // 26 March 2022: 00:00 became 01:00
    EXPECT_EQ(beirut.startOfDay(utc("2022-03-27T12:00:00")), utc("2022-03-26T22:00:00"));
    EXPECT_EQ(beirut.startOfDay(utc("2022-03-26T21:59:59")), utc("2022-03-25T22:00:00"));
}

TEST_F(CalendarTest, FirstOfTwoMidnightsBeginsTheDay)
{
    const Calendar havana(zone("America/Havana")); // 3 November 2024: 01:00 became 00:00
    const QDateTime first = utc("2024-11-03T04:00:00");
    EXPECT_EQ(havana.startOfDay(first), first);
    EXPECT_EQ(havana.startOfDay(first.addSecs(30 * 60)), first);
    EXPECT_EQ(havana.startOfDay(first.addSecs(90 * 60)), first);

    // Here midnight itself is put back into the evening before, a minute after it has come.
    const Calendar gooseBay(zone("America/Goose_Bay"));
    EXPECT_EQ(gooseBay.startOfDay(utc("1990-10-28T12:00:00")), utc("1990-10-28T03:00:00"));
    EXPECT_EQ(gooseBay.startOfDay(utc("1990-10-28T03:00:30")), utc("1990-10-28T03:00:00"));
}

TEST_F(CalendarTest, EveryMomentLiesInItsDayAndDaysDoNotOverlap)
{
    for (const char* name :
         {"Europe/Oslo", "America/Havana", "Asia/Beirut", "Africa/Cairo", "America/Santiago", "Pacific/Apia",
          "Asia/Kathmandu", "Australia/Lord_Howe", "UTC"}) {
        const Calendar calendar(zone(name));
        QDateTime before = calendar.startOfDay(utc("2011-06-01T00:00:00"));
        for (int quarter = 0; quarter < 96 * 500; ++quarter) {
            const QDateTime moment = utc("2011-06-01T00:00:00").addSecs(quarter * 900);
            const QDateTime start = calendar.startOfDay(moment);
            ASSERT_TRUE(start.isValid()) << name;
            ASSERT_LE(start, moment) << name;
            ASSERT_EQ(calendar.dateOf(start), calendar.dateOf(moment)) << name;
            ASSERT_GE(start, before) << name;
            if (start != before) {
                ASSERT_EQ(calendar.daysBefore(start, 1), before) << name;
            }
            before = start;
        }
    }
}

TEST_F(CalendarTest, DateThatTheZoneLeftOutIsNoDay)
{
    const Calendar apia(zone("Pacific/Apia")); // there was no 30 December 2011
    const QDateTime newDay = apia.startOfDay(utc("2011-12-30T12:00:00"));
    EXPECT_EQ(apia.dateOf(newDay), QDate(2011, 12, 31));
    EXPECT_EQ(apia.dateOf(apia.daysBefore(newDay, 1)), QDate(2011, 12, 29));
    EXPECT_EQ(apia.dateOf(apia.daysBefore(newDay, 2)), QDate(2011, 12, 28));
}

TEST_F(CalendarTest, CurrentFollowsTheSystemsZone)
{
    qputenv("TZ", "Asia/Kathmandu");
    EXPECT_EQ(Calendar::current().startOfDay(utc("2025-03-14T18:15:00")), utc("2025-03-14T18:15:00"));
    qputenv("TZ", "Europe/Oslo");
    EXPECT_EQ(Calendar::current().startOfDay(utc("2025-03-14T18:15:00")), utc("2025-03-13T23:00:00"));
}

TEST_F(CalendarTest, ZoneWithoutANameStillHasItsDays)
{
    qputenv("TZ", "XYZ-5:30");
    const Calendar calendar = Calendar::current();
    EXPECT_EQ(calendar.startOfDay(utc("2025-03-14T18:30:00")), utc("2025-03-14T18:30:00"));
    EXPECT_EQ(calendar.startOfDay(utc("2025-03-14T18:29:59")), utc("2025-03-13T18:30:00"));
    EXPECT_EQ(calendar.daysBefore(utc("2025-03-14T18:30:00"), 2), utc("2025-03-12T18:30:00"));
    EXPECT_EQ(calendar.at(QDate(2025, 3, 15), QTime(0, 0)), utc("2025-03-14T18:30:00"));
}

} // namespace

} // namespace tulvane::test
