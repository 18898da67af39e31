#include <base/async/AsyncEvent.h>

#include <QCoroTask>

#include <gtest/gtest.h>

#include <memory>

namespace tulvane {
namespace {

QCoro::Task<> count(AsyncEvent& event, int times, int& counted)
{
    for (int i = 0; i < times; ++i) {
        co_await event.next();
        ++counted;
    }
}

TEST(AsyncEvent, resumesEveryWaiterAtOnce)
{
    AsyncEvent event;
    int first = 0;
    int second = 0;
    const auto one = count(event, 1, first);
    const auto other = count(event, 1, second);
    EXPECT_EQ(first + second, 0);
    event.notifyAll();
    EXPECT_EQ(first, 1);
    EXPECT_EQ(second, 1);
    EXPECT_TRUE(one.isReady() && other.isReady());
}

TEST(AsyncEvent, oneThatWaitsAgainWaitsForTheFollowingTime)
{
    AsyncEvent event;
    int counted = 0;
    const auto task = count(event, 3, counted);
    for (int i = 1; i <= 3; ++i) {
        event.notifyAll();
        EXPECT_EQ(counted, i);
    }
    EXPECT_TRUE(task.isReady());
    event.notifyAll();
    EXPECT_EQ(counted, 3);
}

QCoro::Task<> drop(std::unique_ptr<AsyncEvent>& event)
{
    co_await event->next();
    event.reset();
}

TEST(AsyncEvent, aWaiterMayDestroyIt)
{
    auto event = std::make_unique<AsyncEvent>();
    int counted = 0;
    const auto dropping = drop(event);
    const auto counting = count(*event, 1, counted);
    event->notifyAll();
    EXPECT_EQ(event, nullptr);
    EXPECT_EQ(counted, 1) << "the waiter behind it is resumed all the same";
}

} // namespace
} // namespace tulvane
