#include <hotkeys/HotkeyController.h>
#include <hotkeys/KeyboardShortcuts.h>
#include <platform/fake/FakeGlobalHotkeys.h>
#include <platform/fake/FakeModifierEvents.h>
#include <platform/fake/FakeUserDefaults.h>
#include <ports/KeyModifiers.h>
#include <settings/AppSettings.h>
#include <support/FakeClock.h>
#include <support/LogCapture.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace tulvane {

namespace {

using namespace std::chrono_literals;
using testing::ElementsAre;
using testing::IsEmpty;
using Event = HotkeyStateMachine::Event;
using TapKind = ModifierTapState::Kind;

constexpr KeyCombination optionSpace{49, 0x800};

class HotkeyControllerTest : public testing::Test {
protected:
    void make()
    {
        m_controller = std::make_unique<HotkeyController>(m_settings, m_shortcuts, m_modifiers, m_clock);
        m_controller->onStart = [this] { m_done.append(QStringLiteral("start")); };
        m_controller->onStop = [this] { m_done.append(QStringLiteral("stop")); };
        m_controller->onCancel = [this] { m_done.append(QStringLiteral("cancel")); };
    }
    void combination(bool down) { down ? m_hotkeys.press(optionSpace) : m_hotkeys.release(optionSpace); }
    void rightOption(bool down) { m_modifiers.sendFlags(61, down ? eventFlags::option : 0); }

    FakeUserDefaults m_defaults;
    AppSettings m_settings{m_defaults};
    FakeGlobalHotkeys m_hotkeys;
    KeyboardShortcuts m_shortcuts{m_defaults, m_hotkeys};
    FakeModifierEvents m_modifiers;
    test::FakeClock m_clock;
    QStringList m_done;
    std::unique_ptr<HotkeyController> m_controller;
};

TEST_F(HotkeyControllerTest, ListensToTheDefaultCombinationAtOnce)
{
    make();
    EXPECT_TRUE(m_hotkeys.isRegistered(optionSpace));
    combination(true);
    combination(false);
    combination(true);
    EXPECT_THAT(m_done, ElementsAre(QStringLiteral("start"), QStringLiteral("stop")));
}

TEST_F(HotkeyControllerTest, TheMachineStartsInTheModeOfTheSettings)
{
    m_settings.hotkeyMode.set(HotkeyMode::hybrid);
    make();
    EXPECT_EQ(m_controller->machine.mode, HotkeyMode::hybrid);
    EXPECT_DOUBLE_EQ(m_controller->machine.tapThreshold.count(), 0.3);
    EXPECT_FALSE(m_controller->machine.isRecording);
}

TEST_F(HotkeyControllerTest, MeasuresThePressByTheClock)
{
    m_settings.hotkeyMode.set(HotkeyMode::hold);
    make();
    for (const auto length : {100ms, 299ms, 300ms, 1000ms}) {
        combination(true);
        m_clock.advance(length);
        combination(false);
    }
    EXPECT_EQ(m_done.join(QLatin1Char(' ')),
              QStringLiteral("start cancel start cancel start stop start stop"));
}

TEST_F(HotkeyControllerTest, ATapThatIsHandledLateIsATap)
{
    m_settings.hotkeyMode.set(HotkeyMode::hold);
    make();
    const HotkeyId id = m_hotkeys.registered().front().first;
    const auto late = [&](HotkeyEventKind kind, std::chrono::milliseconds age) {
        (void)m_hotkeys.deliver({HotkeyEvent::Source::hotkey, kind, id, optionSpace, age});
    };
    late(HotkeyEventKind::pressed, 0ms);
    m_clock.advance(800ms);
    late(HotkeyEventKind::released, 700ms);
    late(HotkeyEventKind::pressed, 600ms);
    late(HotkeyEventKind::released, 0ms);
    EXPECT_EQ(m_done.join(QLatin1Char(' ')), QStringLiteral("start cancel start stop"));
}

TEST_F(HotkeyControllerTest, ATapOfTheSingleKeyThatIsHandledLateIsATap)
{
    m_settings.hotkeyMode.set(HotkeyMode::hold);
    m_settings.modifierHotkey.set(ModifierHotkey::rightOption);
    make();
    const auto late = [&](quint64 flags, std::chrono::milliseconds age) {
        m_modifiers.send({ModifierEvent::Type::flagsChanged, 61, flags, age});
    };
    late(eventFlags::option, 0ms);
    m_clock.advance(800ms);
    late(0, 700ms);
    late(eventFlags::option, 600ms);
    late(0, 0ms);
    EXPECT_EQ(m_done.join(QLatin1Char(' ')), QStringLiteral("start cancel start stop"));
}

TEST_F(HotkeyControllerTest, AHybridTapLatchesAndALongPressDoesNot)
{
    m_settings.hotkeyMode.set(HotkeyMode::hybrid);
    make();
    for (const auto length : {100ms, 299ms}) {
        m_done.clear();
        combination(true);
        m_clock.advance(length);
        combination(false);
        EXPECT_THAT(m_done, ElementsAre(QStringLiteral("start")));
        combination(true);
        EXPECT_THAT(m_done, ElementsAre(QStringLiteral("start"), QStringLiteral("stop")));
        combination(false);
    }
    for (const auto length : {300ms, 1000ms}) {
        m_done.clear();
        combination(true);
        m_clock.advance(length);
        combination(false);
        EXPECT_THAT(m_done, ElementsAre(QStringLiteral("start"), QStringLiteral("stop")));
    }
}

TEST_F(HotkeyControllerTest, FollowsTheModeWithoutTouchingARecording)
{
    make();
    combination(true);
    m_settings.hotkeyMode.set(HotkeyMode::hold);
    EXPECT_EQ(m_controller->machine.mode, HotkeyMode::hold);
    EXPECT_TRUE(m_controller->machine.isRecording);
    m_clock.advance(1s);
    combination(false);
    EXPECT_THAT(m_done, ElementsAre(QStringLiteral("start"), QStringLiteral("stop")));
}

TEST_F(HotkeyControllerTest, AnAssignmentThatChangesNothingIsNotPassedOn)
{
    make();
    m_controller->machine.mode = HotkeyMode::hold;
    m_settings.hotkeyMode.set(HotkeyMode::toggle);
    EXPECT_EQ(m_controller->machine.mode, HotkeyMode::hold);
}

TEST_F(HotkeyControllerTest, LogsWhatAnEventMeant)
{
    const test::LogCapture log;
    m_settings.hotkeyMode.set(HotkeyMode::hold);
    make();
    combination(true);
    combination(true);
    combination(false);
    EXPECT_THAT(log.texts("hotkey", QtDebugMsg),
                ElementsAre(QStringLiteral("keyDown → start"), QStringLiteral("keyUp → cancel")));
}

TEST_F(HotkeyControllerTest, ActionsWithoutACallbackAreDropped)
{
    m_settings.hotkeyMode.set(HotkeyMode::hold);
    make();
    m_controller->onStart = {};
    m_controller->onStop = {};
    m_controller->onCancel = {};
    combination(true);
    combination(false);
    combination(true);
    m_clock.advance(1s);
    combination(false);
    EXPECT_THAT(m_done, IsEmpty());
    EXPECT_FALSE(m_controller->machine.isRecording);
}

TEST_F(HotkeyControllerTest, ACallbackMayReplaceItself)
{
    make();
    m_controller->onStart = [this] {
        m_controller->onStart = {};
        m_done.append(QStringLiteral("first"));
    };
    combination(true);
    EXPECT_THAT(m_done, ElementsAre(QStringLiteral("first")));
}

TEST_F(HotkeyControllerTest, EachSingleKeyIsWatchedUnderItsCode)
{
    make();
    EXPECT_EQ(m_controller->modifierTapState(), (ModifierTapState{TapKind::off, {}}));
    using Row = std::pair<ModifierHotkey, qint64>;
    for (const auto& [key, code] :
         {Row{ModifierHotkey::rightOption, 61}, Row{ModifierHotkey::rightCommand, 54},
          Row{ModifierHotkey::rightControl, 62}, Row{ModifierHotkey::rightShift, 60},
          Row{ModifierHotkey::fn, 63}}) {
        m_settings.modifierHotkey.set(key);
        EXPECT_THAT(m_modifiers.keyCodes(), ElementsAre(code));
        EXPECT_EQ(m_controller->modifierTapState(), (ModifierTapState{TapKind::running, {}}));
    }
    m_settings.modifierHotkey.set(ModifierHotkey::none);
    EXPECT_THAT(m_modifiers.keyCodes(), IsEmpty());
    EXPECT_EQ(m_controller->modifierTapState(), (ModifierTapState{TapKind::off, {}}));
}

TEST_F(HotkeyControllerTest, TheSingleKeyThatIsStoredIsWatchedFromTheStart)
{
    m_settings.modifierHotkey.set(ModifierHotkey::rightOption);
    make();
    rightOption(true);
    rightOption(false);
    rightOption(true);
    EXPECT_THAT(m_done, ElementsAre(QStringLiteral("start"), QStringLiteral("stop")));
}

TEST_F(HotkeyControllerTest, TheSameSingleKeyAgainChangesNothing)
{
    make();
    m_settings.modifierHotkey.set(ModifierHotkey::rightOption);
    m_settings.modifierHotkey.set(ModifierHotkey::rightOption);
    EXPECT_EQ(m_modifiers.created(), 1);
    m_controller->applyModifierHotkey(ModifierHotkey::rightOption);
    EXPECT_EQ(m_modifiers.created(), 2) << "asked for directly, it is installed anew";
    EXPECT_THAT(m_modifiers.keyCodes(), ElementsAre(61));
}

TEST_F(HotkeyControllerTest, BothSourcesFeedOneMachine)
{
    m_settings.hotkeyMode.set(HotkeyMode::hold);
    m_settings.modifierHotkey.set(ModifierHotkey::rightOption);
    for (const bool combinationFirst : {true, false}) {
        m_done.clear();
        m_controller.reset();
        make();
        const auto first = [&](bool down) { combinationFirst ? combination(down) : rightOption(down); };
        const auto second = [&](bool down) { combinationFirst ? rightOption(down) : combination(down); };
        first(true);
        second(true);
        m_clock.advance(1s);
        second(false);
        EXPECT_THAT(m_done, ElementsAre(QStringLiteral("start"), QStringLiteral("stop")));
        first(false);
        EXPECT_THAT(m_done, ElementsAre(QStringLiteral("start"), QStringLiteral("stop")));
    }
}

TEST_F(HotkeyControllerTest, TheSingleKeyBeginsNothingWhileACombinationIsRecorded)
{
    m_settings.modifierHotkey.set(ModifierHotkey::rightOption);
    make();
    m_shortcuts.setRecorderActive(true);
    rightOption(true);
    rightOption(false);
    EXPECT_THAT(m_done, IsEmpty()) << "it may be a part of the combination";
    m_shortcuts.setRecorderActive(false);
    rightOption(true);
    rightOption(false);
    m_shortcuts.setRecorderActive(true);
    rightOption(true);
    EXPECT_THAT(m_done, ElementsAre(QStringLiteral("start"), QStringLiteral("stop")))
        << "what was begun can be ended";
}

TEST_F(HotkeyControllerTest, ASingleKeyThatCannotBeWatchedIsLoggedAndShown)
{
    const test::LogCapture log;
    m_modifiers.failTaps(ModifierEventsError::notPermitted());
    m_settings.modifierHotkey.set(ModifierHotkey::rightOption);
    make();
    EXPECT_THAT(log.texts("hotkey", QtCriticalMsg),
                ElementsAre(QStringLiteral(
                    "Could not start modifier key tap (Input Monitoring permission missing?)")));
    EXPECT_EQ(m_controller->modifierTapState(),
              (ModifierTapState{TapKind::failed, ModifierEventsError::notPermitted()}));
    EXPECT_EQ(m_modifiers.created(), 1) << "no retry by itself";
    combination(true);
    EXPECT_THAT(m_done, ElementsAre(QStringLiteral("start")));

    m_modifiers.failTaps({});
    m_controller->applyModifierHotkey(m_settings.modifierHotkey());
    EXPECT_EQ(m_controller->modifierTapState(), (ModifierTapState{TapKind::running, {}}));
}

TEST_F(HotkeyControllerTest, TellsWhenTheSingleKeyStandsOtherwise)
{
    make();
    int told = 0;
    QObject::connect(m_controller.get(), &HotkeyController::modifierTapStateChanged, m_controller.get(),
                     [&] { ++told; });
    m_settings.modifierHotkey.set(ModifierHotkey::rightShift);
    EXPECT_EQ(told, 1);
    m_modifiers.send({ModifierEvent::Type::lost, 0, 0});
    EXPECT_EQ(told, 2);
    EXPECT_EQ(m_controller->modifierTapState(),
              (ModifierTapState{TapKind::failed, ModifierEventsError::unreachable()}));
}

TEST_F(HotkeyControllerTest, ACommandMayReplaceTheSingleKey)
{
    make();
    m_settings.modifierHotkey.set(ModifierHotkey::rightOption);
    m_controller->onStart = [this] { m_settings.modifierHotkey.set(ModifierHotkey::none); };
    rightOption(true);
    EXPECT_THAT(m_modifiers.keyCodes(), IsEmpty());
}

TEST_F(HotkeyControllerTest, EventsAfterItsEndMeanNothing)
{
    m_settings.modifierHotkey.set(ModifierHotkey::rightOption);
    make();
    m_controller.reset();
    combination(true);
    combination(false);
    rightOption(true);
    m_settings.hotkeyMode.set(HotkeyMode::hybrid);
    EXPECT_THAT(m_done, IsEmpty());
    EXPECT_THAT(m_modifiers.keyCodes(), IsEmpty());
}

TEST_F(HotkeyControllerTest, DescribesTheHotkey)
{
    make();
    EXPECT_EQ(m_controller->hotkeyDescription(), QStringLiteral("⌥Space"));
    m_settings.modifierHotkey.set(ModifierHotkey::rightOption);
    EXPECT_EQ(m_controller->hotkeyDescription(), QStringLiteral("⌥Space or Right ⌥ Option"));
    m_shortcuts.setShortcut({}, ShortcutName::dictate());
    EXPECT_EQ(m_controller->hotkeyDescription(), QStringLiteral("Right ⌥ Option"));
    m_settings.modifierHotkey.set(ModifierHotkey::none);
    EXPECT_EQ(m_controller->hotkeyDescription(), QStringLiteral("No hotkey set"));
}

TEST_F(HotkeyControllerTest, TheRecordingThatTheKeyDidNotEndIsForgotten)
{
    make();
    combination(true);
    combination(false);
    m_controller->machine.markRecordingEnded();
    combination(true);
    EXPECT_THAT(m_done, ElementsAre(QStringLiteral("start"), QStringLiteral("start")));
}

TEST_F(HotkeyControllerTest, KeyboardsAreReadOnlyWithTheUsersLeave)
{
    m_modifiers.setReadsEveryKey(true);
    m_settings.modifierHotkey.set(ModifierHotkey::rightOption);
    make();
    EXPECT_EQ(m_modifiers.created(), 0);
    EXPECT_EQ(m_controller->modifierTapState().kind, TapKind::failed);
    m_settings.readsKeyboards.set(true);
    EXPECT_TRUE(m_modifiers.hasOneEnabledTap());
    EXPECT_EQ(m_controller->modifierTapState().kind, TapKind::running);
    rightOption(true);
    EXPECT_THAT(m_done, ElementsAre(QStringLiteral("start")));
    m_settings.readsKeyboards.set(false);
    EXPECT_TRUE(m_modifiers.keyCodes().empty()) << "nothing is read any more";
    EXPECT_EQ(m_controller->modifierTapState().kind, TapKind::failed);
    m_settings.modifierHotkey.set(ModifierHotkey::none);
    EXPECT_EQ(m_controller->modifierTapState().kind, TapKind::off);
}

TEST_F(HotkeyControllerTest, WhereTheDesktopTellsOfModifiersNoLeaveIsNeeded)
{
    m_settings.modifierHotkey.set(ModifierHotkey::rightOption);
    make();
    EXPECT_FALSE(m_controller->readsEveryKey());
    EXPECT_TRUE(m_modifiers.hasOneEnabledTap());
    m_settings.readsKeyboards.set(true);
    EXPECT_EQ(m_modifiers.created(), 1) << "it makes no difference";
}

} // namespace

} // namespace tulvane
