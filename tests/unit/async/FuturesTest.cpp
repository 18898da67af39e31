#include <base/async/AsyncEvent.h>
#include <base/async/TaskFuture.h>
#include <base/async/WaitFor.h>

#include <QTimer>

#include <gtest/gtest.h>

namespace tulvane {
namespace {

QCoro::Task<int> answerAfter(AsyncEvent& event)
{
    co_await event.next();
    co_return 42;
}

TEST(TaskFuture, finishesWithTheTasksResultWhenTheTaskDoes)
{
    AsyncEvent event;
    QFuture<int> future = futureOf(answerAfter(event));
    EXPECT_FALSE(future.isFinished());
    event.notifyAll();
    ASSERT_TRUE(future.isFinished());
    EXPECT_EQ(future.takeResult(), 42);
}

TEST(WaitFor, runsTheEventLoopUntilTheFutureHasFinished)
{
    AsyncEvent event;
    QTimer::singleShot(0, [&event] { event.notifyAll(); });
    EXPECT_EQ(waitFor(futureOf(answerAfter(event))), 42);
}

TEST(WaitFor, aFinishedFutureNeedsNoEventLoop)
{
    bool turned = false;
    QTimer::singleShot(0, [&turned] { turned = true; });
    EXPECT_EQ(waitFor(QtFuture::makeReadyFuture(7)), 7);
    EXPECT_FALSE(turned);
    QCoreApplication::processEvents();
    EXPECT_TRUE(turned);
}

} // namespace
} // namespace tulvane
