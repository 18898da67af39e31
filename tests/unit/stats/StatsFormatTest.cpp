#include "BracketTranslator.h"

#include <stats/StatsFormat.h>

#include <gtest/gtest.h>

namespace tulvane::test {

namespace {

TEST(FormatDuration, RoundsSecondsAndCutsMinutes)
{
    const auto is = [](double seconds, const char* text) {
        EXPECT_EQ(formatDuration(seconds), QString::fromUtf8(text)) << seconds;
    };
    is(0, "0 s");
    is(0.4, "0 s");
    is(0.5, "1 s");
    is(59.4, "59 s");
    is(59.5, "1 min");
    is(59.6, "1 min");
    is(119, "1 min");
    is(119.5, "2 min");
    is(3599.4, "59 min");
    is(3599.5, "1 h");
    is(3600, "1 h");
    is(3659, "1 h");
    is(3659.5, "1 h 1 min");
    is(3660, "1 h 1 min");
    is(7199, "1 h 59 min");
    is(7200, "2 h");
    is(360000000, "100000 h");
}

TEST(FormatDuration, SpeaksTheUsersLanguageUnlessEnglishIsAsked)
{
    const BracketTranslator translator;
    EXPECT_EQ(formatDuration(5), QStringLiteral("[5 s]"));
    EXPECT_EQ(formatDuration(65), QStringLiteral("[1 min]"));
    EXPECT_EQ(formatDuration(3600), QStringLiteral("[1 h]"));
    EXPECT_EQ(formatDuration(3900), QStringLiteral("[1 h 5 min]"));
    EXPECT_EQ(formatDuration(3900, Wording::english), QStringLiteral("1 h 5 min"));
}

TEST(FormatCount, GroupsAsTheLocaleDoes)
{
    EXPECT_EQ(formatCount(1234567, QLocale(QLocale::English, QLocale::UnitedStates)),
              QStringLiteral("1,234,567"));
    EXPECT_EQ(formatCount(1234567, QLocale(QLocale::NorwegianBokmal)),
              QString::fromUtf8("1\u00A0234\u00A0567"));
    EXPECT_EQ(formatCount(0, QLocale(QLocale::English)), QStringLiteral("0"));
}

TEST(FormatFactor, HasOneFractionDigitInTheLocalesWriting)
{
    EXPECT_EQ(formatFactor(2.5, QLocale(QLocale::English)), QStringLiteral("2.5"));
    EXPECT_EQ(formatFactor(4, QLocale(QLocale::NorwegianBokmal)), QStringLiteral("4,0"));
    EXPECT_EQ(formatFactor(3.96, QLocale(QLocale::English)), QStringLiteral("4.0"));
}

TEST(FormatDay, FollowsTheLocale)
{
    EXPECT_EQ(formatDay(QDate(2025, 3, 15), QLocale(QLocale::NorwegianBokmal)), QStringLiteral("15.03.2025"));
}

} // namespace

} // namespace tulvane::test
