#include <speech/ThreadCount.h>

#include <QThread>

#include <gtest/gtest.h>

namespace tulvane {
namespace {

TEST(ThreadCount, leavesTwoCoresAndStaysBetweenOneAndEight)
{
    const std::pair<int, int> expected[] = {{-1, 1}, {0, 1}, {1, 1},  {2, 1},  {3, 1},  {4, 2},
                                            {8, 6},  {9, 7}, {10, 8}, {11, 8}, {256, 8}};
    for (const auto& [processors, threads] : expected)
        EXPECT_EQ(threadCountFor(processors), threads) << processors;
}

TEST(ThreadCount, standsOnTheCoresOfThisProcess)
{
    EXPECT_EQ(recommendedThreadCount(), threadCountFor(QThread::idealThreadCount()));
}

} // namespace
} // namespace tulvane
