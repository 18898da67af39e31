#include <stats/SpeakingFigures.h>

#include <gtest/gtest.h>

#include <limits>

namespace tulvane::test {

namespace {

PeriodTotals spoken(qint64 words, double seconds)
{
    return {.words = words, .speechSeconds = seconds};
}

TEST(SpeakingFigures, HalfAMinuteWithFiftyWords)
{
    const PeriodTotals totals = spoken(50, 30);
    EXPECT_EQ(wordsPerMinute(totals), 100);
    EXPECT_EQ(typingSeconds(50, 40), 75);
    EXPECT_EQ(savedSeconds(50, 30, 40), 45);
    EXPECT_EQ(speedFactor(*wordsPerMinute(totals), 40), 2.5);
}

TEST(SpeakingFigures, ThereIsNoSpeedBelowASecondOrWithoutWords)
{
    EXPECT_FALSE(wordsPerMinute(spoken(5, 0.9)));
    EXPECT_EQ(wordsPerMinute(spoken(5, 1)), 300);
    EXPECT_FALSE(wordsPerMinute(spoken(0, 60)));
    EXPECT_FALSE(wordsPerMinute(spoken(0, 0)));
}

TEST(SpeakingFigures, SavedTimeIsNeverNegative)
{
    EXPECT_EQ(savedSeconds(10, 60, 40), 0);
    EXPECT_EQ(savedSeconds(0, -5, 40), 0);
    EXPECT_EQ(savedSeconds(10, 0, 0), 0);
    EXPECT_EQ(savedSeconds(10, 0, -40), 0);
    EXPECT_EQ(savedSeconds(1, 0, 1), 60);
}

TEST(SpeakingFigures, TypingSpeedBelowOneDividesNothing)
{
    EXPECT_EQ(typingSeconds(10, 0), 0);
    EXPECT_EQ(typingSeconds(10, -1), 0);
    EXPECT_EQ(speedFactor(120, 0), 120);
    EXPECT_EQ(speedFactor(120, -7), 120);
    EXPECT_EQ(speedFactor(120, 1), 120);
}

TEST(SpeakingFigures, AverageIsRounded)
{
    EXPECT_EQ(averageWords({.dictations = 0, .words = 9}), 0);
    EXPECT_EQ(averageWords({.dictations = 2, .words = 5}), 3);
    EXPECT_EQ(averageWords({.dictations = 3, .words = 10}), 3);
}

TEST(SpeakingFigures, HalvesAreRoundedAwayFromZero)
{
    EXPECT_EQ(rounded(0.5), 1);
    EXPECT_EQ(rounded(2.5), 3);
    EXPECT_EQ(rounded(-0.5), -1);
    EXPECT_EQ(rounded(2.4), 2);
    EXPECT_EQ(rounded(0.49999999999999994), 0);
}

TEST(SpeakingFigures, RoundingStaysWithin64Bits)
{
    constexpr qint64 most = std::numeric_limits<qint64>::max();
    constexpr qint64 least = std::numeric_limits<qint64>::min();
    constexpr double infinity = std::numeric_limits<double>::infinity();
    EXPECT_EQ(rounded(9223372036854775808.0), most);
    EXPECT_EQ(rounded(9223372036854774784.0), 9223372036854774784);
    EXPECT_EQ(rounded(infinity), most);
    EXPECT_EQ(rounded(-infinity), least);
    EXPECT_EQ(rounded(-9223372036854775808.0), least);
    EXPECT_EQ(rounded(std::numeric_limits<double>::quiet_NaN()), 0);
}

} // namespace

} // namespace tulvane::test
