#include <hotkeys/KeyboardShortcuts.h>
#include <hotkeys/ShortcutRecorder.h>
#include <platform/fake/FakeGlobalHotkeys.h>
#include <platform/fake/FakeUserDefaults.h>
#include <ports/KeyModifiers.h>

#include <gtest/gtest.h>

namespace tulvane {

namespace {

using Outcome = ShortcutRecorder::Outcome;

constexpr quint32 letterD = 2;
constexpr quint32 leftOption = 58;

class ShortcutRecorderTest : public testing::Test {
protected:
    ShortcutRecorderTest()
    {
        m_shortcuts.declare(name);
        m_shortcuts.onKeyDown(name, [] {});
        QObject::connect(&m_recorder, &ShortcutRecorder::beep, &m_recorder, [this] { ++m_beeps; });
    }
    [[nodiscard]] std::optional<Shortcut> stored() const { return m_shortcuts.getShortcut(name); }

    const ShortcutName name = ShortcutName::dictate();
    FakeUserDefaults m_defaults;
    FakeGlobalHotkeys m_hotkeys;
    KeyboardShortcuts m_shortcuts{m_defaults, m_hotkeys};
    ShortcutRecorder m_recorder{m_shortcuts, name};
    int m_beeps = 0;
};

TEST_F(ShortcutRecorderTest, ShowsTheCombinationAndWhatToDo)
{
    EXPECT_EQ(m_recorder.text(), QStringLiteral("⌥Space"));
    EXPECT_EQ(m_recorder.placeholder(), QStringLiteral("Record shortcut"));
    m_recorder.start();
    EXPECT_TRUE(m_recorder.isActive());
    EXPECT_EQ(m_recorder.placeholder(), QStringLiteral("Press shortcut"));
    m_recorder.clear();
    EXPECT_EQ(m_recorder.text(), QString());
}

TEST_F(ShortcutRecorderTest, StoresWhatIsPressed)
{
    m_recorder.start();
    EXPECT_EQ(m_recorder.keyPressed({leftOption, carbon::option}), Outcome::ignored);
    EXPECT_EQ(m_recorder.keyPressed({letterD, carbon::option | carbon::control}), Outcome::accepted);
    EXPECT_EQ(stored(), (Shortcut{letterD, 0x1800}));
    EXPECT_FALSE(m_recorder.isActive());
    EXPECT_EQ(m_recorder.text(), QStringLiteral("⌃⌥D"));
    m_recorder.keyReleased(letterD);
    EXPECT_TRUE(m_hotkeys.isRegistered({letterD, 0x1800}));
    EXPECT_EQ(m_beeps, 0);
}

TEST_F(ShortcutRecorderTest, WhatWasRecordedIsNoHotkeyBeforeItsKeyIsUp)
{
    constexpr KeyCombination pressed{letterD, carbon::option | carbon::control};
    m_recorder.start();
    EXPECT_EQ(m_recorder.keyPressed(pressed), Outcome::accepted);
    EXPECT_TRUE(m_recorder.isBusy());
    EXPECT_EQ(m_recorder.keyPressed(pressed), Outcome::ignored) << "the keyboard repeats it";
    EXPECT_EQ(m_recorder.keyReleased(leftOption), Outcome::ignored);
    EXPECT_FALSE(m_hotkeys.isRegistered(pressed));
    m_recorder.keyReleased(letterD);
    EXPECT_FALSE(m_recorder.isBusy());
    EXPECT_TRUE(m_hotkeys.isRegistered(pressed));
}

TEST_F(ShortcutRecorderTest, AReleaseThatNeverComesDoesNotLeaveTheHotkeyOff)
{
    constexpr KeyCombination pressed{letterD, carbon::option};
    m_recorder.start();
    EXPECT_EQ(m_recorder.keyPressed(pressed), Outcome::accepted);
    m_recorder.stop(); // the focus has gone elsewhere
    EXPECT_TRUE(m_hotkeys.isRegistered(pressed));
    m_recorder.start();
    EXPECT_EQ(m_recorder.keyPressed(pressed), Outcome::accepted);
    m_recorder.start(); // the next attempt, with the key still down
    EXPECT_TRUE(m_recorder.isActive());
    m_recorder.keyReleased(letterD);
    EXPECT_TRUE(m_recorder.isActive());
    {
        ShortcutRecorder other(m_shortcuts, name);
        m_recorder.stop();
        other.start();
        EXPECT_EQ(other.keyPressed(pressed), Outcome::accepted);
        EXPECT_FALSE(m_hotkeys.isRegistered(pressed));
    }
    EXPECT_TRUE(m_hotkeys.isRegistered(pressed));
}

TEST_F(ShortcutRecorderTest, TheCombinationThatIsSetCanBePressedAgain)
{
    m_recorder.start();
    EXPECT_FALSE(m_hotkeys.isRegistered({49, carbon::option}));
    EXPECT_EQ(m_recorder.keyPressed({49, carbon::option}), Outcome::accepted);
    m_recorder.keyReleased(49);
    EXPECT_TRUE(m_hotkeys.isRegistered({49, carbon::option}));
}

TEST_F(ShortcutRecorderTest, BeepsAtWhatIsNoCombinationAndGoesOn)
{
    m_recorder.start();
    EXPECT_EQ(m_recorder.keyPressed({letterD, 0}), Outcome::beeped);
    EXPECT_EQ(m_recorder.keyPressed({letterD, carbon::shift}), Outcome::beeped);
    EXPECT_EQ(m_beeps, 2);
    EXPECT_TRUE(m_recorder.isActive());
    EXPECT_EQ(stored(), name.defaultShortcut);
}

TEST_F(ShortcutRecorderTest, BeepsAtAModifierThatCameAndWentAlone)
{
    m_recorder.start();
    for (const quint32 key : {quint32{63}, quint32{56}}) {
        EXPECT_EQ(m_recorder.keyPressed({key, 0}), Outcome::ignored);
        EXPECT_EQ(m_recorder.keyReleased(key), Outcome::beeped);
    }
    EXPECT_EQ(m_beeps, 2);
    // With another key in between it was part of a combination.
    EXPECT_EQ(m_recorder.keyPressed({56, carbon::shift}), Outcome::ignored);
    EXPECT_EQ(m_recorder.keyPressed({letterD, carbon::shift}), Outcome::beeped);
    EXPECT_EQ(m_recorder.keyReleased(letterD), Outcome::ignored);
    EXPECT_EQ(m_recorder.keyReleased(56), Outcome::ignored);
    EXPECT_EQ(m_beeps, 3);
}

TEST_F(ShortcutRecorderTest, BeepsAtNoModifierThatWasDownBeforeTheFieldWasChosen)
{
    m_recorder.start();
    EXPECT_EQ(m_recorder.keyPressed({leftOption, carbon::option}), Outcome::ignored);
    m_recorder.stop();
    m_recorder.start();
    EXPECT_EQ(m_recorder.keyReleased(leftOption), Outcome::ignored);
    // Of two that were down together the first release says it.
    EXPECT_EQ(m_recorder.keyPressed({leftOption, carbon::option}), Outcome::ignored);
    EXPECT_EQ(m_recorder.keyPressed({56, carbon::option | carbon::shift}), Outcome::ignored);
    EXPECT_EQ(m_recorder.keyReleased(56), Outcome::beeped);
    EXPECT_EQ(m_recorder.keyReleased(leftOption), Outcome::ignored);
    EXPECT_EQ(m_beeps, 1);
}

TEST_F(ShortcutRecorderTest, SaysWhyACombinationIsRefused)
{
    m_hotkeys.setSymbolicHotkeys({{true, {letterD, carbon::command}, {}}});
    m_recorder.start();
    EXPECT_EQ(m_recorder.keyPressed({letterD, carbon::command}), Outcome::refused);
    EXPECT_TRUE(m_recorder.message().startsWith(QStringLiteral("The system already uses")));
    EXPECT_TRUE(m_recorder.isActive());
    EXPECT_EQ(m_beeps, 0);
    EXPECT_EQ(stored(), name.defaultShortcut);
    EXPECT_EQ(m_recorder.keyPressed({letterD, carbon::option}), Outcome::accepted);
    EXPECT_EQ(m_recorder.message(), QString());
}

TEST_F(ShortcutRecorderTest, BackspaceClears)
{
    for (const quint32 key : {quint32{51}, quint32{117}}) {
        m_shortcuts.setShortcut(Shortcut{letterD, carbon::option}, name);
        m_recorder.start();
        EXPECT_EQ(m_recorder.keyPressed({key, 0}), Outcome::cleared);
        EXPECT_EQ(stored(), std::nullopt);
        EXPECT_EQ(m_defaults.value(QStringLiteral("KeyboardShortcuts_dictate")), QVariant(false));
        EXPECT_FALSE(m_recorder.isActive());
    }
    m_recorder.start();
    EXPECT_EQ(m_recorder.keyPressed({51, carbon::option}), Outcome::accepted)
        << "with a modifier it is a key";
}

TEST_F(ShortcutRecorderTest, EscapeAndTabLeaveEverythingAsItWas)
{
    m_recorder.start();
    EXPECT_EQ(m_recorder.keyPressed({53, 0}), Outcome::cancelled);
    EXPECT_FALSE(m_recorder.isActive());
    m_recorder.start();
    EXPECT_EQ(m_recorder.keyPressed({48, 0}), Outcome::passedOn);
    EXPECT_FALSE(m_recorder.isActive());
    EXPECT_EQ(stored(), name.defaultShortcut);
}

TEST_F(ShortcutRecorderTest, HearsNothingWhileItIsNotRecording)
{
    EXPECT_EQ(m_recorder.keyPressed({letterD, carbon::option}), Outcome::ignored);
    EXPECT_EQ(m_recorder.keyReleased(56), Outcome::ignored);
    EXPECT_EQ(stored(), name.defaultShortcut);
}

TEST_F(ShortcutRecorderTest, AFieldThatGoesAwayLeavesTheHotkeyOn)
{
    {
        ShortcutRecorder other(m_shortcuts, name);
        other.start();
        EXPECT_FALSE(m_hotkeys.isRegistered({49, carbon::option}));
    }
    EXPECT_TRUE(m_hotkeys.isRegistered({49, carbon::option}));
}

} // namespace

} // namespace tulvane
