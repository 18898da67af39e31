#include <hotkeys/RepeatedCommand.h>
#include <support/FakeClock.h>
#include <support/FakeScheduler.h>

#include <gmock/gmock.h>

namespace tulvane::test {

namespace {

using namespace std::chrono_literals;
using testing::ElementsAre;
using testing::SizeIs;
using Event = HotkeyStateMachine::Event;

class RepeatedCommandTest : public testing::Test {
protected:
    /// As a desktop does it: at once, after half a second, and then every 30 ms.
    void hold(std::chrono::milliseconds duration)
    {
        command.note();
        std::chrono::milliseconds held = 500ms;
        if (duration >= held)
            scheduler.advance(held);
        for (; held <= duration; held += 30ms) {
            command.note();
            scheduler.advance(30ms);
        }
    }

    FakeClock clock;
    FakeScheduler scheduler{&clock};
    std::vector<std::pair<Event, std::chrono::milliseconds>> told;
    /// The times of the edges.
    std::vector<std::chrono::milliseconds> at;
    RepeatedCommand command{
        clock, scheduler, [this](Event event, std::chrono::milliseconds age) {
            told.emplace_back(event, age);
            at.push_back(std::chrono::duration_cast<std::chrono::milliseconds>(clock.elapsed()) - age);
        }};
};

TEST_F(RepeatedCommandTest, ACallIsAPressAtOnceAndAShortOneInTheEnd)
{
    command.note();
    ASSERT_THAT(told, SizeIs(1));
    EXPECT_EQ(told.front(), std::pair(Event::keyDown, 0ms));
    scheduler.advance(699ms);
    ASSERT_THAT(told, SizeIs(1));
    scheduler.advance(1ms);
    ASSERT_THAT(told, SizeIs(2));
    EXPECT_EQ(told.back().first, Event::keyUp);
    EXPECT_EQ(at.back() - at.front(), 50ms);
}

TEST_F(RepeatedCommandTest, AHeldKeyIsOnePressAndOneReleaseWhenItsRepeatsEnd)
{
    hold(3000ms);
    EXPECT_THAT(told, SizeIs(1));
    scheduler.advance(1000ms);
    ASSERT_THAT(told, SizeIs(2));
    EXPECT_GE(at.back() - at.front(), 2900ms);
    EXPECT_LE(at.back() - at.front(), 3000ms);
    EXPECT_LE(told.back().second, 300ms);
}

TEST_F(RepeatedCommandTest, TheNextCallAfterwardsIsThePressOfAnother)
{
    command.note();
    scheduler.advance(700ms);
    command.note();
    scheduler.advance(700ms);
    ASSERT_THAT(told, SizeIs(4));
    EXPECT_EQ(told[2].first, Event::keyDown);
    EXPECT_EQ(at[3] - at[2], 50ms) << "from its own press on";
}

TEST_F(RepeatedCommandTest, ABusyMachineDropsARepeatOrTwo)
{
    hold(600ms);
    scheduler.advance(200ms);
    command.note();
    scheduler.advance(200ms);
    command.note();
    EXPECT_THAT(told, SizeIs(1));
}

TEST_F(RepeatedCommandTest, WhereTheCallsComeInBurstsALongerPauseIsNoRelease)
{
    hold(600ms);
    scheduler.advance(220ms);
    command.note();
    scheduler.advance(900ms);
    EXPECT_THAT(told, SizeIs(1));
    command.note();
    scheduler.advance(1199ms);
    EXPECT_THAT(told, SizeIs(1));
    scheduler.advance(1ms);
    ASSERT_THAT(told, SizeIs(2));
    // A later hold is on a machine that may be idle again.
    hold(600ms);
    scheduler.advance(300ms);
    EXPECT_THAT(told, SizeIs(4));
}

TEST_F(RepeatedCommandTest, TheMachineReadsTapsAndHoldsFromIt)
{
    HotkeyStateMachine machine;
    machine.mode = HotkeyMode::hybrid;
    std::vector<HotkeyStateMachine::Action> actions;
    RepeatedCommand key(clock, scheduler, [&](Event event, std::chrono::milliseconds age) {
        if (const auto action = machine.handle(event, clock.elapsed() - age))
            actions.push_back(*action);
    });
    key.note();
    scheduler.advance(2000ms);
    key.note();
    scheduler.advance(2000ms);
    EXPECT_THAT(actions, ElementsAre(HotkeyStateMachine::Action::start, HotkeyStateMachine::Action::stop));

    actions.clear();
    key.note();
    scheduler.advance(500ms);
    for (int i = 0; i < 50; ++i) {
        key.note();
        scheduler.advance(30ms);
    }
    EXPECT_THAT(actions, ElementsAre(HotkeyStateMachine::Action::start));
    scheduler.advance(300ms);
    EXPECT_THAT(actions, ElementsAre(HotkeyStateMachine::Action::start, HotkeyStateMachine::Action::stop));
}

} // namespace

} // namespace tulvane::test
