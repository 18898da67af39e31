#include <hotkeys/HotkeyStateMachine.h>

#include <gtest/gtest.h>

namespace tulvane {

namespace {

using namespace std::chrono_literals;
using Machine = HotkeyStateMachine;
using Action = Machine::Action;
using Event = Machine::Event;

constexpr auto nothing = std::nullopt;

Machine machineIn(HotkeyMode mode)
{
    Machine machine;
    machine.mode = mode;
    return machine;
}

/// Presses at `from` and releases after `length`; what the release yields.
std::optional<Action> holdFor(Machine& machine, std::chrono::nanoseconds from,
                              std::chrono::nanoseconds length)
{
    EXPECT_EQ(machine.handle(Event::keyDown, from), Action::start);
    return machine.handle(Event::keyUp, from + length);
}

TEST(HotkeyStateMachine, StartsAtRest)
{
    const Machine machine;
    EXPECT_DOUBLE_EQ(machine.tapThreshold.count(), 0.3);
    EXPECT_FALSE(machine.isRecording);
    EXPECT_FALSE(machine.isKeyDown);
    EXPECT_FALSE(machine.keyDownAt);
    EXPECT_FALSE(machine.toggledOnByTap);
}

TEST(HotkeyStateMachine, ToggleStartsAndStopsOnPressesAlone)
{
    for (const auto length :
         {std::chrono::nanoseconds(1ms), std::chrono::nanoseconds(300ms), std::chrono::nanoseconds(10s)}) {
        Machine machine = machineIn(HotkeyMode::toggle);
        EXPECT_EQ(holdFor(machine, 1s, length), nothing);
        EXPECT_TRUE(machine.isRecording);
        EXPECT_EQ(machine.handle(Event::keyDown, 20s), Action::stop);
        EXPECT_EQ(machine.handle(Event::keyUp, 20s + length), nothing);
        EXPECT_FALSE(machine.isRecording);
    }
}

TEST(HotkeyStateMachine, HoldStopsOnReleaseAndCancelsATap)
{
    const auto released = [](std::chrono::nanoseconds after) {
        Machine machine = machineIn(HotkeyMode::hold);
        const auto action = holdFor(machine, 5s, after);
        EXPECT_FALSE(machine.isRecording);
        return action;
    };
    EXPECT_EQ(released(100ms), Action::cancel);
    EXPECT_EQ(released(299ms), Action::cancel);
    EXPECT_EQ(released(299'999'999ns), Action::cancel);
    EXPECT_EQ(released(300ms), Action::stop);
    EXPECT_EQ(released(1s), Action::stop);
}

TEST(HotkeyStateMachine, HoldIgnoresAPressWhileRecording)
{
    Machine machine = machineIn(HotkeyMode::hold);
    machine.isRecording = true;
    EXPECT_EQ(machine.handle(Event::keyDown, 1s), nothing);
    EXPECT_EQ(machine.handle(Event::keyUp, 2s), Action::stop);
}

TEST(HotkeyStateMachine, HybridStopsOnReleaseAfterALongPress)
{
    for (const auto length : {std::chrono::nanoseconds(300ms), std::chrono::nanoseconds(1s)}) {
        Machine machine = machineIn(HotkeyMode::hybrid);
        EXPECT_EQ(holdFor(machine, 0s, length), Action::stop);
        EXPECT_FALSE(machine.isRecording);
        EXPECT_FALSE(machine.toggledOnByTap);
    }
}

TEST(HotkeyStateMachine, HybridLatchesOnATapUntilTheNextPress)
{
    for (const auto length : {std::chrono::nanoseconds(100ms), std::chrono::nanoseconds(299ms)}) {
        Machine machine = machineIn(HotkeyMode::hybrid);
        EXPECT_EQ(holdFor(machine, 0s, length), nothing);
        EXPECT_TRUE(machine.isRecording);
        EXPECT_TRUE(machine.toggledOnByTap);
        EXPECT_EQ(machine.handle(Event::keyDown, 5s), Action::stop);
        EXPECT_FALSE(machine.isRecording);
        EXPECT_FALSE(machine.toggledOnByTap);
        EXPECT_TRUE(machine.isKeyDown);
        EXPECT_EQ(machine.handle(Event::keyUp, 5s + length), nothing);
        EXPECT_FALSE(machine.isKeyDown);
    }
}

TEST(HotkeyStateMachine, HybridIgnoresAPressDuringARecordingThatNoTapLatched)
{
    Machine machine = machineIn(HotkeyMode::hybrid);
    machine.isRecording = true;
    EXPECT_EQ(machine.handle(Event::keyDown, 1s), nothing);
    EXPECT_TRUE(machine.isRecording);
}

TEST(HotkeyStateMachine, HybridLeavesTheLatchAsItIsWhenItStarts)
{
    Machine machine = machineIn(HotkeyMode::hybrid);
    machine.toggledOnByTap = true;
    EXPECT_EQ(machine.handle(Event::keyDown, 0s), Action::start);
    EXPECT_TRUE(machine.toggledOnByTap);
    EXPECT_EQ(machine.handle(Event::keyUp, 1s), nothing);
}

TEST(HotkeyStateMachine, ASecondPressWithoutAReleaseIsSwallowed)
{
    for (const HotkeyMode mode : {HotkeyMode::toggle, HotkeyMode::hold, HotkeyMode::hybrid}) {
        Machine machine = machineIn(mode);
        EXPECT_EQ(machine.handle(Event::keyDown, 1s), Action::start);
        EXPECT_EQ(machine.handle(Event::keyDown, 2s), nothing);
        EXPECT_EQ(machine.keyDownAt, std::chrono::nanoseconds(1s));
        EXPECT_TRUE(machine.isRecording);
    }
}

TEST(HotkeyStateMachine, AReleaseWithoutAPressIsIgnored)
{
    for (const HotkeyMode mode : {HotkeyMode::toggle, HotkeyMode::hold, HotkeyMode::hybrid}) {
        Machine machine = machineIn(mode);
        machine.isRecording = true;
        EXPECT_EQ(machine.handle(Event::keyUp, 1s), nothing);
        EXPECT_TRUE(machine.isRecording);
        EXPECT_FALSE(machine.toggledOnByTap);
    }
}

TEST(HotkeyStateMachine, APressWhoseBeginningIsUnknownCountsAsAHold)
{
    for (const HotkeyMode mode : {HotkeyMode::hold, HotkeyMode::hybrid}) {
        Machine machine = machineIn(mode);
        machine.isRecording = true;
        machine.isKeyDown = true;
        EXPECT_EQ(machine.handle(Event::keyUp, 0s), Action::stop);
    }
}

TEST(HotkeyStateMachine, TheReleaseForgetsWhenThePressBegan)
{
    Machine machine = machineIn(HotkeyMode::toggle);
    EXPECT_EQ(holdFor(machine, 7s, 1s), nothing);
    EXPECT_FALSE(machine.keyDownAt);
}

TEST(HotkeyStateMachine, AModeChangeWhileRecordingKeepsTheRecording)
{
    for (const auto& [length, expected] : {std::pair{std::chrono::nanoseconds(200ms), Action::cancel},
                                           std::pair{std::chrono::nanoseconds(400ms), Action::stop}}) {
        Machine machine = machineIn(HotkeyMode::toggle);
        EXPECT_EQ(machine.handle(Event::keyDown, 1s), Action::start);
        machine.mode = HotkeyMode::hold;
        EXPECT_TRUE(machine.isRecording);
        EXPECT_EQ(machine.handle(Event::keyUp, 1s + length), expected);
    }
}

TEST(HotkeyStateMachine, AnEndThatTheKeyDidNotCauseTouchesTheKeyNot)
{
    Machine machine = machineIn(HotkeyMode::hybrid);
    EXPECT_EQ(machine.handle(Event::keyDown, 3s), Action::start);
    machine.toggledOnByTap = true;
    machine.markRecordingEnded();
    EXPECT_FALSE(machine.isRecording);
    EXPECT_FALSE(machine.toggledOnByTap);
    EXPECT_TRUE(machine.isKeyDown);
    EXPECT_EQ(machine.keyDownAt, std::chrono::nanoseconds(3s));
}

TEST(HotkeyStateMachine, AfterSuchAnEndTheReleaseOfTheHeldKeyMeansNothing)
{
    for (const HotkeyMode mode : {HotkeyMode::hold, HotkeyMode::hybrid}) {
        for (const auto length : {std::chrono::nanoseconds(100ms), std::chrono::nanoseconds(1s)}) {
            Machine machine = machineIn(mode);
            EXPECT_EQ(machine.handle(Event::keyDown, 0s), Action::start);
            machine.markRecordingEnded();
            EXPECT_EQ(machine.handle(Event::keyUp, length), nothing);
            EXPECT_EQ(machine.handle(Event::keyDown, 10s), Action::start);
        }
    }
}

TEST(HotkeyStateMachine, AfterSuchAnEndTheNextPressStarts)
{
    Machine machine = machineIn(HotkeyMode::toggle);
    EXPECT_EQ(holdFor(machine, 0s, 100ms), nothing);
    machine.markRecordingEnded();
    EXPECT_EQ(machine.handle(Event::keyDown, 1s), Action::start);
}

TEST(HotkeyStateMachine, TheNextPressStopsARecordingThatTheKeyDidNotStart)
{
    for (const HotkeyMode mode : {HotkeyMode::toggle, HotkeyMode::hybrid}) {
        Machine machine = machineIn(mode);
        machine.markRecordingStarted();
        EXPECT_EQ(machine.handle(Event::keyDown, 0s), Action::stop);
        EXPECT_EQ(machine.handle(Event::keyUp, 1s), nothing);
        EXPECT_FALSE(machine.isRecording);
        EXPECT_FALSE(machine.toggledOnByTap);
    }
    Machine machine = machineIn(HotkeyMode::hold);
    machine.markRecordingStarted();
    EXPECT_EQ(machine.handle(Event::keyDown, 0s), nothing);
    EXPECT_EQ(machine.handle(Event::keyUp, 1s), Action::stop);
}

TEST(HotkeyStateMachine, CasesAreNamedAsTheyAreWritten)
{
    EXPECT_STREQ(name(Event::keyDown), "keyDown");
    EXPECT_STREQ(name(Event::keyUp), "keyUp");
    EXPECT_STREQ(name(Action::start), "start");
    EXPECT_STREQ(name(Action::stop), "stop");
    EXPECT_STREQ(name(Action::cancel), "cancel");
}

} // namespace

} // namespace tulvane
