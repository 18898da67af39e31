#include "HotkeyViewFixture.h"

#include <QQuickItem>

#include <functional>
#include <vector>

namespace tulvane::test {

namespace {

/// Which keys are the field's while it records, and until what was recorded has been let go of.
class KeyboardGrabTest : public HotkeyViewFixture {};

TEST_F(KeyboardGrabTest, WhileItRecordsTheWindowHasTheWholeKeyboard)
{
    QWindow* const window = world.ui.onboardingWindow().window();
    EXPECT_EQ(world.keyboard.holder, nullptr);
    record();
    EXPECT_EQ(world.keyboard.holder, window);
    probe().nativeKey(letterD);
    EXPECT_EQ(world.keyboard.holder, window) << "a beep ends nothing";
    probe().nativeKeyDown(controlPlusD);
    EXPECT_EQ(world.keyboard.holder, window) << "the release must come here, too";
    probe().nativeKeyUp(controlPlusD);
    letGo();
    EXPECT_EQ(world.keyboard.holder, nullptr);
}

TEST_F(KeyboardGrabTest, HoweverRecordingEndsTheKeyboardIsGivenBack)
{
    const std::vector<std::function<void()>> ends{
        [this] { probe().nativeKey(escape, Qt::Key_Escape); },
        [this] { probe().nativeKey(tab, Qt::Key_Tab); },
        [this] { probe().nativeKey(backspace, Qt::Key_Backspace); },
        [this] { probe().click(QStringLiteral("hotkey.mode.hold")); },
        [this] { probe().clickAt({6, 300}); },
        [this] { field().stop(); },
        [this] { world.scheduler.advance(std::chrono::seconds(30)); },
        [this] { world.ui.onboardingWindow().close(); }};
    for (std::size_t i = 0; i < ends.size(); ++i) {
        record();
        ASSERT_NE(world.keyboard.holder, nullptr) << i;
        ends.at(i)();
        UiWorld::settle();
        EXPECT_EQ(world.keyboard.holder, nullptr) << i;
        EXPECT_FALSE(field().isBusy()) << i;
    }
}

TEST_F(KeyboardGrabTest, OnADesktopThatGivesTheKeyboardToNobodyItRecordsAllTheSame)
{
    world.keyboard.isRefused = true;
    record();
    probe().nativeKey(controlPlusD);
    letGo();
    EXPECT_EQ(stored(), Shortcut::fromCombination(controlD));
    EXPECT_TRUE(isRegistered(controlD));
}

TEST_F(KeyboardGrabTest, AnAbandonedFieldStopsListening)
{
    record();
    world.scheduler.advance(std::chrono::seconds(29));
    EXPECT_TRUE(field().isRecording());
    probe().nativeKey(letterD); // somebody is there
    world.scheduler.advance(std::chrono::seconds(29));
    EXPECT_TRUE(field().isRecording());
    world.scheduler.advance(std::chrono::seconds(1));
    EXPECT_FALSE(field().isRecording());
    EXPECT_TRUE(isRegistered(altSpace)) << "the hotkey works again";
}

TEST_F(KeyboardGrabTest, WhatIsRecordedBeginsNoDictationWhileItIsHeld)
{
    record();
    probe().nativeKeyDown(controlPlusD);
    EXPECT_FALSE(field().isRecording()) << "the field shows it at once";
    EXPECT_FALSE(isRegistered(controlD)) << "the keyboard's repetitions would be presses of it";
    probe().nativeKeyDown(controlPlusD, 0, WindowProbe::Press::repeated);
    EXPECT_EQ(stored(), Shortcut::fromCombination(controlD));
    // The same, told in another way.
    for (int i = 0; i < 3; ++i) {
        probe().nativeKeyUp(controlPlusD);
        world.scheduler.advance(std::chrono::milliseconds(5));
        probe().nativeKeyDown(controlPlusD);
        letGo();
        EXPECT_FALSE(isRegistered(controlD));
    }
    probe().nativeKeyUp(controlPlusD);
    letGo();
    EXPECT_TRUE(isRegistered(controlD));
}

TEST_F(KeyboardGrabTest, TheKeyCountsAndNotTheModifiersThatGoUpWithIt)
{
    constexpr NativeKey control{0, 59, static_cast<quint32>(eventFlags::control)};
    record();
    probe().nativeKeyDown(control);
    probe().nativeKeyDown(controlPlusD);
    probe().nativeKeyUp(control);
    letGo();
    EXPECT_FALSE(isRegistered(controlD)) << "its key is still down";
    probe().nativeKeyUp(letterD);
    probe().nativeKeyUp(shift);
    probe().nativeKeyDown(letterX);
    probe().nativeKeyUp(letterX);
    letGo();
    EXPECT_TRUE(isRegistered(controlD));
}

TEST_F(KeyboardGrabTest, ACombinationWithSpaceIsNotSpace)
{
    probe().item(combination).forceActiveFocus(Qt::TabFocusReason);
    for (const auto modifier : {Qt::AltModifier, Qt::ControlModifier, Qt::MetaModifier}) {
        probe().press(Qt::Key_Space, modifier);
        EXPECT_FALSE(field().isRecording());
        probe().press(Qt::Key_Backspace, modifier);
        EXPECT_EQ(stored(), Shortcut::fromCombination(altSpace));
    }
}

} // namespace

} // namespace tulvane::test
