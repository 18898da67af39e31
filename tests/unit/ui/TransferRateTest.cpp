#include <ui/viewmodels/TransferRate.h>

#include <gtest/gtest.h>

namespace tulvane::test {

namespace {

using namespace std::chrono_literals;

TEST(TransferRateTest, IsTheMeanOfTheLastSeconds)
{
    TransferRate rate;
    EXPECT_EQ(rate.bytesPerSecond(), std::nullopt);
    rate.note(0, 0s);
    rate.note(500, 500ms);
    EXPECT_EQ(rate.bytesPerSecond(), std::nullopt) << "too soon";
    rate.note(1000, 1s);
    EXPECT_DOUBLE_EQ(rate.bytesPerSecond().value(), 1000);
    for (int second = 2; second <= 20; ++second)
        rate.note(1000 + (second - 1) * 100, std::chrono::seconds(second));
    EXPECT_DOUBLE_EQ(rate.bytesPerSecond().value(), 100) << "what was long ago does not count";
}

TEST(TransferRateTest, BeginsAnewWithTheDownload)
{
    TransferRate rate;
    rate.note(5000, 0s);
    rate.note(9000, 2s);
    rate.note(100, 3s);
    EXPECT_EQ(rate.bytesPerSecond(), std::nullopt);
    rate.note(1100, 5s);
    EXPECT_DOUBLE_EQ(rate.bytesPerSecond().value(), 500);
    rate.clear();
    EXPECT_EQ(rate.bytesPerSecond(), std::nullopt);
}

TEST(TransferRateTest, ATimeIsSaidInItsLargestUnits)
{
    EXPECT_EQ(durationText(0s), QStringLiteral("0 s"));
    EXPECT_EQ(durationText(59s), QStringLiteral("59 s"));
    EXPECT_EQ(durationText(60s), QStringLiteral("1 min"));
    EXPECT_EQ(durationText(90s), QStringLiteral("1 min 30 s"));
    EXPECT_EQ(durationText(1800s), QStringLiteral("30 min"));
    EXPECT_EQ(durationText(3900s), QStringLiteral("1 h 5 min"));
}

} // namespace

} // namespace tulvane::test
