#include "Days.h"

#include <stats/StatsFile.h>

#include <limits>

namespace tulvane::test {

namespace {

QByteArray fileWith(const QByteArray& day)
{
    return R"({"days":[)" + day + R"(],"version":1})";
}

/// A day's object with one key's value replaced.
QByteArray dayWith(const QByteArray& key, const QByteArray& value)
{
    QByteArray day =
        R"({"characters":5,"date":"2025-03-14T23:00:00Z","dictations":1,"speechSeconds":2.5,"words":3})";
    const qsizetype start = day.indexOf(QByteArray("\"" + key + "\":")) + key.size() + 3;
    qsizetype end = day.indexOf(',', start);
    if (end < 0)
        end = day.size() - 1;
    return day.replace(start, end - start, value);
}

TEST(StatsFile, IsOneLineWithSortedKeysAndDatesInUtc)
{
    const DailyStat day{inOslo(2025, 3, 15), 2, 30, 170, 12.5};
    EXPECT_EQ(encodeStatistics({day}).value(),
              R"({"days":[{"characters":170,"date":"2025-03-14T23:00:00Z","dictations":2,)"
              R"("speechSeconds":12.5,"words":30}],"version":1})");
    EXPECT_EQ(encodeStatistics({}).value(), R"({"days":[],"version":1})");
}

TEST(StatsFile, KeepsTheOrderOfTheDays)
{
    const QList<DailyStat> days{{utc("2025-01-02T00:00:00"), 1, 1, 1, 1},
                                {utc("2025-01-01T00:00:00"), 2, 2, 2, 2}};
    EXPECT_EQ(decodeStatistics(encodeStatistics(days).value()), days);
}

TEST(StatsFile, NumbersComeBackExactly)
{
    constexpr qint64 most = std::numeric_limits<qint64>::max();
    constexpr qint64 least = std::numeric_limits<qint64>::min();
    for (const double seconds : {0.0, 0.1, 12.0, 1.0 / 3, 1e300, 5e-324}) {
        const QList<DailyStat> days{{utc("2025-01-02T00:00:00"), most, most - 1, least, seconds}};
        EXPECT_EQ(decodeStatistics(encodeStatistics(days).value()), days) << seconds;
    }
}

TEST(StatsFile, WhatTheFormatCannotHoldIsNotWritten)
{
    DailyStat day{utc("2025-01-02T00:00:00"), 1, 1, 1, std::numeric_limits<double>::infinity()};
    EXPECT_EQ(encodeStatistics({day}).error(),
              QStringLiteral("the seconds of speech are not a finite number"));
    day.speechSeconds = std::numeric_limits<double>::quiet_NaN();
    EXPECT_FALSE(encodeStatistics({day}));
    const QDateTime outside(QDate(10000, 1, 1), QTime(0, 0), Qt::UTC);
    EXPECT_EQ(encodeStatistics({DailyStat{.date = outside}}).error(),
              QStringLiteral("a date lies outside the years that the file can hold"));
    EXPECT_FALSE(encodeStatistics({DailyStat{.date = QDateTime(QDate(-1, 12, 31), QTime(0, 0), Qt::UTC)}}));
    EXPECT_FALSE(encodeStatistics({DailyStat{}}));
}

TEST(StatsFile, AnyVersionNumberAndUnknownKeysAreAccepted)
{
    for (const char* version : {"1", "7", "-3", "1.5", "1e9"}) {
        const QByteArray bytes = R"({"days":[],"extra":{"a":1},"version":)" + QByteArray(version) + "}";
        EXPECT_EQ(decodeStatistics(bytes), QList<DailyStat>()) << version;
    }
    EXPECT_TRUE(decodeStatistics(fileWith(dayWith("words", R"(3,"extra":null)"))));
}

TEST(StatsFile, FileOfAnotherShapeIsRefused)
{
    for (const char* bytes :
         {"", "null", "[]", "{}", "{", "tull", R"({"days":[]})", R"({"version":1})",
          R"({"days":[],"version":"1"})", R"({"days":[],"version":null})", R"({"days":{},"version":1})",
          R"({"days":null,"version":1})", R"({"days":[1],"version":1})", R"({"days":[null],"version":1})",
          R"({"days":[{}],"version":1})", R"({"days":[],"version":1)", R"({"days":[],"version":1}x)"})
        EXPECT_FALSE(decodeStatistics(bytes)) << bytes;
    EXPECT_FALSE(decodeStatistics(QByteArray("{\"days\":[],\"version\":1}\0\0", 25)));
}

TEST(StatsFile, EachFieldOfADayMustBeThereAndOfItsType)
{
    ASSERT_TRUE(decodeStatistics(fileWith(dayWith("words", "3"))));
    for (const char* key : {"characters", "dictations", "words"}) {
        for (const char* wrong : {"null", "\"3\"", "3.5", "true", "[]", "9223372036854775808", "1e19"})
            EXPECT_FALSE(decodeStatistics(fileWith(dayWith(key, wrong)))) << key << " " << wrong;
        for (const char* right : {"0", "-4", "3.0", "1e3", "9223372036854775807", "-9223372036854775808"})
            EXPECT_TRUE(decodeStatistics(fileWith(dayWith(key, right)))) << key << " " << right;
    }
    for (const char* wrong : {"null", "\"3\"", "false", "1e999"})
        EXPECT_FALSE(decodeStatistics(fileWith(dayWith("speechSeconds", wrong)))) << wrong;
    for (const char* key : {"characters", "dictations", "words", "speechSeconds", "date"}) {
        QByteArray day = dayWith("words", "3");
        EXPECT_FALSE(decodeStatistics(fileWith(day.replace(key, "other")))) << key;
    }
}

TEST(StatsFile, OneBadDayMakesTheWholeFileBad)
{
    EXPECT_FALSE(decodeStatistics(fileWith(dayWith("words", "3") + "," + dayWith("words", "null"))));
}

TEST(StatsFile, DatesAreIsoMomentsWithAZone)
{
    const auto dateOf = [](const char* text) -> std::optional<QDateTime> {
        const auto days = decodeStatistics(fileWith(dayWith("date", text)));
        return days ? std::optional(days->first().date) : std::nullopt;
    };
    EXPECT_EQ(dateOf(R"("2025-03-14T23:00:00Z")"), utc("2025-03-14T23:00:00"));
    EXPECT_EQ(dateOf(R"("2025-03-15T00:00:00+01:00")"), utc("2025-03-14T23:00:00"));
    EXPECT_EQ(dateOf(R"("2025-03-14T18:30:00-0430")"), utc("2025-03-14T23:00:00"));
    EXPECT_EQ(dateOf(R"("2025-03-14T23:00:00.000Z")"), utc("2025-03-14T23:00:00"));
    for (const char* wrong :
         {"1741993200", "null", R"("")", R"("2025-03-14")", R"("2025-03-14T23:00:00")",
          R"("2025-03-14 23:00:00Z")", R"("2025-02-30T23:00:00Z")", R"("2025-03-14T23:61:00Z")",
          R"("2025-3-14T23:00:00Z")", R"("0000-03-14T23:00:00Z")", R"("2025-03-14T23:00:00Z\n")",
          R"("x2025-03-14T23:00:00Z")"})
        EXPECT_FALSE(dateOf(wrong)) << wrong;
}

} // namespace

} // namespace tulvane::test
