#include <base/async/PendingDelays.h>
#include <support/FakeScheduler.h>

#include <QCoroTask>

#include <gtest/gtest.h>

namespace tulvane {
namespace {

using namespace std::chrono_literals;

class PendingDelaysTest : public testing::Test {
protected:
    QCoro::Task<> sleep(std::chrono::milliseconds duration, bool& over)
    {
        const auto limit = delays.limit(duration);
        while (!limit->isOver())
            co_await delays.next();
        over = true;
    }

    test::FakeScheduler scheduler;
    PendingDelays delays{scheduler};
};

TEST_F(PendingDelaysTest, aLimitIsOverAfterItsTime)
{
    bool over = false;
    const auto task = sleep(100ms, over);
    scheduler.advance(99ms);
    EXPECT_FALSE(over);
    scheduler.advance(1ms);
    EXPECT_TRUE(over);
}

TEST_F(PendingDelaysTest, oneLimitDoesNotEndAnother)
{
    bool early = false;
    bool late = false;
    const auto first = sleep(100ms, early);
    const auto second = sleep(300ms, late);
    scheduler.advance(100ms);
    EXPECT_TRUE(early);
    EXPECT_FALSE(late);
    scheduler.advance(200ms);
    EXPECT_TRUE(late);
}

TEST_F(PendingDelaysTest, cutShortEndsAllOfThemAndLaterOnesHaveTheirTime)
{
    bool first = false;
    bool second = false;
    const auto one = sleep(1h, first);
    const auto other = sleep(2h, second);
    delays.cutShort();
    EXPECT_TRUE(first && second);
    bool third = false;
    const auto later = sleep(100ms, third);
    EXPECT_FALSE(third);
    scheduler.advance(100ms);
    EXPECT_TRUE(third);
}

TEST_F(PendingDelaysTest, anythingThatHappensWakesTheWaiterBeforeItsLimit)
{
    bool happened = false;
    bool seen = false;
    const auto wait = [&]() -> QCoro::Task<> {
        const auto limit = delays.limit(1h);
        while (!happened && !limit->isOver())
            co_await delays.next();
        seen = happened;
    };
    const auto task = wait();
    delays.notifyAll();
    EXPECT_FALSE(seen);
    happened = true;
    delays.notifyAll();
    EXPECT_TRUE(seen);
    EXPECT_TRUE(scheduler.pending().empty()) << "a dropped limit is cancelled";
}

} // namespace
} // namespace tulvane
