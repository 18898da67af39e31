#include <base/async/PendingValue.h>

#include <QCoroTask>

#include <gtest/gtest.h>

namespace tulvane {
namespace {

QCoro::Task<> take(std::shared_ptr<PendingValue<int>> pending, std::optional<int>& value, bool& done)
{
    value = co_await Awaited<int>(std::move(pending));
    done = true;
}

class PendingValueTest : public testing::Test {
protected:
    std::shared_ptr<PendingValue<int>> pending = std::make_shared<PendingValue<int>>();
    std::optional<int> value;
    bool done = false;
};

TEST_F(PendingValueTest, givesTheValueAtOnce)
{
    const auto task = take(pending, value, done);
    EXPECT_FALSE(done);
    pending->end(7);
    EXPECT_TRUE(done);
    EXPECT_EQ(value, 7);
}

TEST_F(PendingValueTest, aWaitThatEndsWithoutAValueGivesNone)
{
    const auto task = take(pending, value, done);
    pending->end();
    EXPECT_TRUE(done);
    EXPECT_EQ(value, std::nullopt);
}

TEST_F(PendingValueTest, whatCameBeforeTheWaitIsThere)
{
    pending->end(7);
    const auto task = take(pending, value, done);
    EXPECT_TRUE(done);
    EXPECT_EQ(value, 7);
}

TEST_F(PendingValueTest, onlyTheFirstEndCounts)
{
    pending->end();
    pending->end(7);
    const auto task = take(pending, value, done);
    EXPECT_EQ(value, std::nullopt);
    EXPECT_TRUE(pending->isOver());
}

} // namespace
} // namespace tulvane
