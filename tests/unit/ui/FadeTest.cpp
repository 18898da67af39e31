#include <support/FakeScheduler.h>
#include <ui/indicator/Fade.h>

#include <gtest/gtest.h>

namespace tulvane::test {

namespace {

using namespace std::chrono_literals;

class FadeTest : public testing::Test {
protected:
    FakeClock m_clock;
    FakeScheduler m_scheduler{&m_clock};
    QList<double> m_seen;
    Fade m_fade{m_scheduler, m_clock, [this](double opacity) { m_seen.append(opacity); }};
};

TEST_F(FadeTest, GoesEvenlyAndEndsOnTime)
{
    m_fade.run(1, 160ms);
    m_scheduler.advance(80ms);
    EXPECT_NEAR(m_fade.opacity(), 0.5, 1e-6);
    EXPECT_EQ(m_seen.size(), 5);
    m_scheduler.advance(79ms);
    EXPECT_LT(m_fade.opacity(), 1);
    m_scheduler.advance(1ms);
    EXPECT_EQ(m_fade.opacity(), 1);
    EXPECT_TRUE(m_scheduler.pending().empty());
    EXPECT_TRUE(std::ranges::is_sorted(m_seen));
}

TEST_F(FadeTest, ALateStepMakesItCoarserNotLonger)
{
    m_fade.run(1, 160ms);
    m_clock.advance(120ms);
    m_scheduler.advance(16ms);
    EXPECT_NEAR(m_fade.opacity(), 136.0 / 160, 1e-6);
    m_clock.advance(1s);
    m_scheduler.advance(16ms);
    EXPECT_EQ(m_fade.opacity(), 1);
}

TEST_F(FadeTest, TurnsRoundFromWhereItIs)
{
    m_fade.set(1);
    m_fade.run(0, 200ms);
    m_scheduler.advance(100ms);
    const double half = m_fade.opacity();
    EXPECT_NEAR(half, 0.5, 0.1);
    m_fade.run(1, 150ms);
    EXPECT_EQ(m_fade.opacity(), half);
    m_scheduler.advance(150ms);
    EXPECT_EQ(m_fade.opacity(), 1);
    for (const double seen : m_seen)
        EXPECT_GE(seen, half - 1e-9);
}

TEST_F(FadeTest, WhatIsThereOrOnItsWayIsNotStartedAnew)
{
    m_fade.set(1);
    m_fade.run(1, 150ms);
    EXPECT_TRUE(m_scheduler.pending().empty());
    m_fade.run(0, 200ms);
    m_scheduler.advance(150ms);
    m_fade.run(0, 200ms);
    m_scheduler.advance(50ms);
    EXPECT_EQ(m_fade.opacity(), 0);
}

TEST_F(FadeTest, WithoutTimeItIsThereAtOnceAndASetEndsIt)
{
    m_fade.run(1, 0ms);
    EXPECT_EQ(m_fade.opacity(), 1);
    m_fade.run(0, 200ms);
    m_fade.set(0.25);
    m_scheduler.advance(1s);
    EXPECT_EQ(m_fade.opacity(), 0.25);
    EXPECT_EQ(m_fade.target(), 0.25);
}

} // namespace

} // namespace tulvane::test
