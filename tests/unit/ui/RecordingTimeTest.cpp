#include "IndicatorFixture.h"

namespace tulvane::test {

namespace {

using namespace std::chrono_literals;

const Phase recording{Phase::Kind::recording, {}};

class RecordingTimeTest : public IndicatorFixture {
protected:
    void record(std::chrono::seconds longest)
    {
        m_indicator.setLongestRecording([longest] { return longest; });
        show(recording);
    }
    [[nodiscard]] QString time() { return m_indicator.model().time(); }
    void pass(std::chrono::seconds time) { m_world.scheduler.advance(time); }
};

TEST_F(RecordingTimeTest, IsShownFromTheFirstMinuteOn)
{
    record(300s);
    EXPECT_EQ(time(), QString());
    pass(59s);
    EXPECT_EQ(time(), QString());
    pass(1s);
    EXPECT_EQ(time(), QStringLiteral("1:00"));
    pass(9s);
    EXPECT_EQ(time(), QStringLiteral("1:09"));
    pass(61s);
    EXPECT_EQ(time(), QStringLiteral("2:10"));
    EXPECT_FALSE(m_indicator.model().isEnding());
    EXPECT_TRUE(texts().contains(QStringLiteral("2:10")));
    EXPECT_TRUE(texts().contains(QStringLiteral("Listening…")));
}

TEST_F(RecordingTimeTest, CountsTheLastTenSecondsDown)
{
    record(300s);
    pass(289s);
    EXPECT_EQ(time(), QStringLiteral("4:49"));
    pass(1s);
    EXPECT_EQ(time(), QStringLiteral("10 s left"));
    EXPECT_TRUE(m_indicator.model().isEnding());
    pass(9s);
    EXPECT_EQ(time(), QStringLiteral("1 s left"));
    EXPECT_EQ(WindowProbe(*m_indicator.panel()).layoutFlaws(), QStringList());
}

TEST_F(RecordingTimeTest, AShortRecordingCountsDownWithoutEverCountingUp)
{
    record(30s);
    pass(19s);
    EXPECT_EQ(time(), QString());
    pass(1s);
    EXPECT_EQ(time(), QStringLiteral("10 s left"));
    record(10s);
}

TEST_F(RecordingTimeTest, TheShortestOfAllCountsFromItsBeginning)
{
    record(10s);
    EXPECT_EQ(time(), QStringLiteral("10 s left"));
}

TEST_F(RecordingTimeTest, EndsWithTheRecordingAndWakesNothingAfterIt)
{
    record(300s);
    pass(70s);
    m_indicator.setPhase({Phase::Kind::transcribing, {}});
    EXPECT_EQ(time(), QString());
    pass(240s);
    EXPECT_EQ(time(), QString());
    m_indicator.hide(false);
    EXPECT_TRUE(m_world.scheduler.pending().empty());
}

TEST_F(RecordingTimeTest, WakesNothingBeforeThereIsSomethingToShow)
{
    still();
    record(300s);
    EXPECT_EQ(m_world.scheduler.pending().size(), 1);
}

TEST_F(RecordingTimeTest, NothingMovesWhenADigitChanges)
{
    record(300s);
    pass(71s);
    UiWorld::settle();
    const qreal width = item("indicator.time").width();
    for (int second = 0; second < 9; ++second) {
        pass(1s);
        UiWorld::settle();
        EXPECT_EQ(item("indicator.time").width(), width) << qPrintable(time());
    }
}

TEST(PhaseAnnouncerTest, ScreenReadersHearEachPhaseAndNoText)
{
    UiWorld world;
    world.indicator.target = &world.ui.indicator();
    world.installModel(world.settings.selectedModelID());
    UiWorld::settle();
    world.announced.clear();
    world.dictate(QStringLiteral("hemmelig"));
    EXPECT_EQ(world.announced, (QStringList{QStringLiteral("Listening…"), QStringLiteral("Transcribing…"),
                                            QStringLiteral("Inserting…")}));
    world.announced.clear();
    world.settings.maxRecordingSeconds.set(20);
    world.controller.start();
    world.scheduler.advance(15s);
    EXPECT_EQ(world.announced, (QStringList{QStringLiteral("Listening…"), QStringLiteral("10 s left")}));
    world.controller.cancel(QStringLiteral("Too short"));
    EXPECT_EQ(world.announced.last(), QStringLiteral("Too short"));
    world.indicator.target = nullptr;
}

} // namespace

} // namespace tulvane::test
