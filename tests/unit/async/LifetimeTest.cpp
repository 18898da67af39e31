#include <base/async/AsyncEvent.h>
#include <base/async/Lifetime.h>

#include <QCoroTask>

#include <gtest/gtest.h>

namespace tulvane {
namespace {

class Owner final {
public:
    Owner(AsyncEvent& event, int& seen) : m_event(event), m_seen(seen) {}
    QCoro::Task<> work()
    {
        const Lifetime::Guard owner = m_lifetime.guard();
        co_await m_event.next();
        if (!owner)
            co_return;
        ++m_seen;
    }
    void end() { m_lifetime.end(); }

private:
    AsyncEvent& m_event;
    int& m_seen;
    Lifetime m_lifetime;
};

TEST(Lifetime, aCoroutineGoesOnWhileItsOwnerExists)
{
    AsyncEvent event;
    int seen = 0;
    Owner owner(event, seen);
    const auto task = owner.work();
    event.notifyAll();
    EXPECT_EQ(seen, 1);
}

TEST(Lifetime, aCoroutineStopsWhenItsOwnerIsGone)
{
    AsyncEvent event;
    int seen = 0;
    auto owner = std::make_unique<Owner>(event, seen);
    const auto task = owner->work();
    owner.reset();
    event.notifyAll();
    EXPECT_EQ(seen, 0);
    EXPECT_TRUE(task.isReady());
}

TEST(Lifetime, anEndedOwnerCountsAsGone)
{
    AsyncEvent event;
    int seen = 0;
    Owner owner(event, seen);
    const auto task = owner.work();
    owner.end();
    event.notifyAll();
    EXPECT_EQ(seen, 0);
    const Lifetime lifetime;
    EXPECT_TRUE(static_cast<bool>(lifetime.guard()));
}

} // namespace
} // namespace tulvane
