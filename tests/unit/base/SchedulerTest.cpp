#include <base/Scheduler.h>
#include <support/Await.h>
#include <support/FakeScheduler.h>

#include <gtest/gtest.h>

using namespace std::chrono_literals;

namespace tulvane {

TEST(EventLoopScheduler, CallsOnceAfterTheDelay)
{
    EventLoopScheduler scheduler;
    int calls = 0;
    const auto started = std::chrono::steady_clock::now();
    const auto token = scheduler.after(20ms, [&] { ++calls; });
    EXPECT_EQ(calls, 0);
    ASSERT_TRUE(test::waitUntil([&] { return calls > 0; }));
    EXPECT_GE(std::chrono::steady_clock::now() - started, 19ms);
    EXPECT_EQ(calls, 1);
}

TEST(EventLoopScheduler, ForgetsTheCallWhenTheTokenIsDropped)
{
    EventLoopScheduler scheduler;
    bool dropped = false;
    bool kept = false;
    auto token = scheduler.after(1ms, [&] { dropped = true; });
    token.reset();
    const auto later = scheduler.after(20ms, [&] { kept = true; });
    ASSERT_TRUE(test::waitUntil([&] { return kept; }));
    EXPECT_FALSE(dropped);
}

TEST(EventLoopScheduler, TheWorkMayDropItsOwnToken)
{
    EventLoopScheduler scheduler;
    std::unique_ptr<Scheduler::Token> token;
    bool called = false;
    token = scheduler.after(1ms, [&] {
        token.reset();
        called = true;
    });
    EXPECT_TRUE(test::waitUntil([&] { return called; }));
}

TEST(FakeScheduler, RunsWhatIsDueInOrderAndNothingBefore)
{
    test::FakeClock clock;
    test::FakeScheduler scheduler(&clock);
    std::vector<int> order;
    const auto second = scheduler.after(200ms, [&] { order.push_back(2); });
    const auto first = scheduler.after(100ms, [&] { order.push_back(1); });
    auto never = scheduler.after(150ms, [&] { order.push_back(3); });
    never.reset();
    scheduler.advance(99ms);
    EXPECT_TRUE(order.empty());
    scheduler.advance(101ms);
    EXPECT_EQ(order, (std::vector{1, 2}));
    EXPECT_EQ(clock.elapsed(), 200ms);
    EXPECT_TRUE(scheduler.pending().empty());
}

} // namespace tulvane
