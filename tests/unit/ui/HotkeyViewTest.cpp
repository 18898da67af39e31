#include "HotkeyViewFixture.h"

#include <base/Translate.h>
#include <hotkeys/ShortcutTexts.h>

#include <QAccessible>
#include <QQuickItem>

#include <gmock/gmock.h>

namespace tulvane::test {

namespace {

class HotkeyViewTest : public HotkeyViewFixture {};

TEST_F(HotkeyViewTest, OffersEveryModeWithItsExplanation)
{
    const std::array<std::pair<HotkeyMode, const char*>, 3> modes{
        std::pair{HotkeyMode::toggle,
                  "Press once to start listening, press again to stop and insert the text."},
        std::pair{HotkeyMode::hold, "Listens only while the key is held. A very short tap cancels."},
        std::pair{HotkeyMode::hybrid, "Hold to talk, or tap briefly to start and tap again to stop."}};
    for (const auto& [mode, explanation] : modes) {
        EXPECT_TRUE(probe().shows(title(mode)));
        EXPECT_TRUE(probe().shows(QString::fromUtf8(explanation)));
        probe().click(QStringLiteral("hotkey.mode.") + rawValue(mode));
        EXPECT_EQ(world.settings.hotkeyMode(), mode);
        EXPECT_TRUE(
            probe().item(QStringLiteral("hotkey.mode.") + rawValue(mode)).property("chosen").toBool());
    }
    EXPECT_FALSE(probe().item(QStringLiteral("hotkey.mode.toggle")).property("chosen").toBool());
    world.ui.models().hotkey()->setMode(QStringLiteral("Hold"));
    EXPECT_EQ(world.settings.hotkeyMode(), HotkeyMode::hybrid) << "an unknown value changes nothing";
}

TEST_F(HotkeyViewTest, AScreenReaderThatComesLaterReadsTheModesAsChoices)
{
    const auto state = [this](const char* mode) {
        QQuickItem& choice = probe().item(QStringLiteral("hotkey.mode.") + QString::fromLatin1(mode));
        QAccessibleInterface* const reader = QAccessible::queryAccessibleInterface(&choice);
        EXPECT_EQ(reader->role(), QAccessible::RadioButton) << mode;
        EXPECT_TRUE(reader->state().checkable) << mode;
        return reader->state().checked != 0;
    };
    QAccessible::setActive(true);
    EXPECT_TRUE(state("toggle"));
    EXPECT_FALSE(state("hold"));
    probe().click(QStringLiteral("hotkey.mode.hold"));
    EXPECT_FALSE(state("toggle"));
    EXPECT_TRUE(state("hold"));
    QAccessible::setActive(false);
}

TEST_F(HotkeyViewTest, ArrowKeysGoFromModeToMode)
{
    probe().click(QStringLiteral("hotkey.mode.toggle"));
    probe().press(Qt::Key_Down);
    EXPECT_EQ(world.settings.hotkeyMode(), HotkeyMode::hold);
    probe().press(Qt::Key_Down);
    probe().press(Qt::Key_Down);
    EXPECT_EQ(world.settings.hotkeyMode(), HotkeyMode::hybrid);
    probe().press(Qt::Key_Up);
    EXPECT_EQ(world.settings.hotkeyMode(), HotkeyMode::hold);
}

TEST_F(HotkeyViewTest, ReturnAndEnterChooseTheModeThatHasTheFocus)
{
    probe().item(QStringLiteral("hotkey.mode.hold")).forceActiveFocus(Qt::TabFocusReason);
    probe().press(Qt::Key_Return);
    EXPECT_EQ(world.settings.hotkeyMode(), HotkeyMode::hold);
    probe().item(QStringLiteral("hotkey.mode.toggle")).forceActiveFocus(Qt::TabFocusReason);
    probe().press(Qt::Key_Enter);
    EXPECT_EQ(world.settings.hotkeyMode(), HotkeyMode::toggle);
}

TEST_F(HotkeyViewTest, TheFieldShowsTheCombinationAndHowItIsUsed)
{
    for (const QString& text :
         {QStringLiteral("⌥"), QStringLiteral("Space"), QStringLiteral("Key combination")})
        EXPECT_TRUE(probe().shows(text)) << qPrintable(text);
    for (const ShortcutText& text :
         {shortcutTexts::howToRecord, shortcutTexts::whatIsAccepted, shortcutTexts::howToClear})
        EXPECT_TRUE(probe().shows(text.text())) << text.english;
    EXPECT_FALSE(probe().shows(QStringLiteral("Record shortcut")));
    world.shortcuts.setShortcut(std::nullopt, ShortcutName::dictate());
    UiWorld::settle();
    EXPECT_TRUE(probe().shows(QStringLiteral("Record shortcut")));
    EXPECT_FALSE(probe().has(combination + QStringLiteral(".clear")));
}

TEST_F(HotkeyViewTest, AClickRecordsAndTheNextCombinationIsSet)
{
    record();
    EXPECT_TRUE(field().isRecording());
    EXPECT_TRUE(probe().shows(QStringLiteral("Press shortcut")));
    EXPECT_TRUE(world.globalHotkeys.registered().isEmpty()) << "our own must not catch the keys meanwhile";
    probe().nativeKey(controlPlusD);
    letGo();
    EXPECT_FALSE(field().isRecording());
    EXPECT_EQ(stored(), Shortcut::fromCombination(controlD));
    EXPECT_TRUE(isRegistered(controlD)) << "what was recorded is what is registered";
    EXPECT_TRUE(probe().shows(QStringLiteral("⌃")));
    EXPECT_TRUE(probe().shows(QStringLiteral("D")));
    EXPECT_EQ(world.beeps, 0);
}

TEST_F(HotkeyViewTest, TheCombinationThatIsSetCanBePressed)
{
    record();
    probe().nativeKey(altPlusSpace);
    letGo();
    EXPECT_EQ(stored(), Shortcut::fromCombination(altSpace));
    EXPECT_TRUE(isRegistered(altSpace));
}

TEST_F(HotkeyViewTest, SpaceAndReturnRecordAsAClickDoes)
{
    for (const int key : {Qt::Key_Space, Qt::Key_Return, Qt::Key_Enter}) {
        probe().item(combination).forceActiveFocus(Qt::TabFocusReason);
        EXPECT_TRUE(probe().item(combination).property("visualFocus").toBool());
        probe().press(key);
        EXPECT_TRUE(field().isRecording());
        probe().nativeKey(escape, Qt::Key_Escape);
        EXPECT_FALSE(field().isRecording());
    }
}

TEST_F(HotkeyViewTest, EscapeChangesNothing)
{
    record();
    probe().nativeKey(escape, Qt::Key_Escape);
    EXPECT_FALSE(field().isRecording());
    EXPECT_EQ(stored(), Shortcut::fromCombination(altSpace));
    EXPECT_TRUE(isRegistered(altSpace));
    EXPECT_EQ(world.beeps, 0);
}

TEST_F(HotkeyViewTest, BackspaceClearsForGood)
{
    record();
    probe().nativeKey(backspace, Qt::Key_Backspace);
    EXPECT_FALSE(field().isRecording());
    EXPECT_EQ(stored(), std::nullopt);
    EXPECT_EQ(world.defaults.value(QStringLiteral("KeyboardShortcuts_dictate")), QVariant(false));
    EXPECT_TRUE(world.globalHotkeys.registered().isEmpty());
    EXPECT_TRUE(probe().shows(QStringLiteral("Record shortcut")));
}

TEST_F(HotkeyViewTest, BackspaceClearsAlsoAFieldThatIsOnlyFocused)
{
    probe().item(combination).forceActiveFocus(Qt::TabFocusReason);
    probe().press(Qt::Key_Backspace);
    EXPECT_EQ(stored(), std::nullopt);
}

TEST_F(HotkeyViewTest, TheClearButtonClears)
{
    record();
    probe().click(combination + QStringLiteral(".clear"));
    EXPECT_FALSE(field().isRecording());
    EXPECT_EQ(stored(), std::nullopt);
}

TEST_F(HotkeyViewTest, ReturnOnTheClearButtonClears)
{
    probe().item(combination + QStringLiteral(".clear")).forceActiveFocus(Qt::TabFocusReason);
    probe().press(Qt::Key_Return);
    EXPECT_FALSE(field().isRecording());
    EXPECT_EQ(stored(), std::nullopt);
}

TEST_F(HotkeyViewTest, ALetterAloneBeepsAndTheRuleStandsOut)
{
    record();
    EXPECT_FALSE(field().isRuleBroken());
    probe().nativeKeyDown(letterD);
    EXPECT_EQ(world.beeps, 1);
    EXPECT_TRUE(field().isRecording());
    EXPECT_TRUE(field().isRuleBroken());
    probe().nativeKeyDown(letterD, 0, WindowProbe::Press::repeated);
    probe().nativeKeyUp(letterD);
    EXPECT_EQ(world.beeps, 1) << "a held key beeps once";
    EXPECT_EQ(stored(), Shortcut::fromCombination(altSpace));
    probe().nativeKey(controlPlusD);
    EXPECT_FALSE(field().isRuleBroken());
    EXPECT_EQ(stored(), Shortcut::fromCombination(controlD));
}

TEST_F(HotkeyViewTest, AModifierAloneBeepsWhenItGoesUp)
{
    for (const NativeKey& key : {shift, fn}) {
        world.beeps = 0;
        record();
        probe().nativeKeyDown(key);
        EXPECT_EQ(world.beeps, 0) << "it may become a combination";
        probe().nativeKeyUp(key);
        EXPECT_EQ(world.beeps, 1);
        probe().nativeKey(escape, Qt::Key_Escape);
    }
}

TEST_F(HotkeyViewTest, AKeyThatCannotBeStoredBeeps)
{
    record();
    probe().nativeKey({0, 999, static_cast<quint32>(eventFlags::control)});
    EXPECT_EQ(world.beeps, 1);
    EXPECT_TRUE(field().isRecording());
}

TEST_F(HotkeyViewTest, WhatAMenuItemUsesIsRefusedWithItsName)
{
    record();
    WindowProbe& again = probe();
    again.nativeKey(commandPlusQ);
    EXPECT_TRUE(
        again.shows(QStringLiteral("The menu item “Quit Tulvane” already uses this key combination.")));
    EXPECT_TRUE(field().isRecording());
    EXPECT_EQ(stored(), Shortcut::fromCombination(altSpace));
    EXPECT_EQ(world.beeps, 0);
    again.nativeKey(controlPlusD);
    EXPECT_FALSE(again.has(QStringLiteral("hotkey.refusal")));
}

TEST_F(HotkeyViewTest, WhatTheDesktopUsesIsRefusedWithAWayOut)
{
    world.globalHotkeys.setSymbolicHotkeys({{true, controlD, {}}});
    record();
    probe().nativeKey(controlPlusD);
    EXPECT_TRUE(
        probe().shows(QStringLiteral("The system already uses this key combination. What the system uses "
                                     "can be changed in its keyboard settings.")));
    EXPECT_EQ(stored(), Shortcut::fromCombination(altSpace));
    probe().nativeKey(escape, Qt::Key_Escape);
    record();
    EXPECT_FALSE(probe().has(QStringLiteral("hotkey.refusal"))) << "a new attempt begins without it";
}

TEST_F(HotkeyViewTest, RecordingEndsWithTheFocus)
{
    record();
    probe().click(QStringLiteral("hotkey.mode.hold"));
    EXPECT_FALSE(field().isRecording());
    EXPECT_TRUE(isRegistered(altSpace));
}

TEST_F(HotkeyViewTest, RecordingEndsWhenSomethingWithoutFocusIsClicked)
{
    record();
    probe().clickAt({6, 300});
    EXPECT_FALSE(field().isRecording());
}

TEST_F(HotkeyViewTest, RecordingEndsWithTheWindow)
{
    record();
    world.ui.onboardingWindow().close();
    EXPECT_FALSE(field().isRecording());
    EXPECT_TRUE(isRegistered(altSpace));
    world.ui.showOnboarding();
    UiWorld::settle();
    EXPECT_FALSE(field().isRecording());
}

TEST_F(HotkeyViewTest, TabEndsRecordingAndGoesOn)
{
    record();
    probe().nativeKey(tab, Qt::Key_Tab);
    EXPECT_FALSE(field().isRecording());
    EXPECT_FALSE(probe().item(combination).hasActiveFocus());
    EXPECT_EQ(stored(), Shortcut::fromCombination(altSpace));
}

TEST_F(HotkeyViewTest, OnlyWhileItRecordsItKeepsKeysFromTheWindow)
{
    probe().item(combination).forceActiveFocus(Qt::TabFocusReason);
    EXPECT_FALSE(probe().isKeptFromShortcuts(commandPlusQ, Qt::Key_Q));
    record();
    EXPECT_TRUE(probe().isKeptFromShortcuts(commandPlusQ, Qt::Key_Q));
}

TEST_F(HotkeyViewTest, ACombinationThatAnotherProgramHoldsIsSaidAndAFreeOneOffered)
{
    EXPECT_FALSE(probe().has(QStringLiteral("hotkey.problem")));
    world.globalHotkeys.takeElsewhere(altSpace);
    world.shortcuts.registerAgain();
    UiWorld::settle();
    EXPECT_TRUE(probe().shows(HotkeyError::taken(0).description()));
    EXPECT_EQ(field().alternative(), QStringLiteral("Use ⌃⌥Space instead"));
    EXPECT_TRUE(world.globalHotkeys.registered().isEmpty()) << "it was only tried";
    probe().click(QStringLiteral("hotkey.useAlternative"));
    EXPECT_EQ(stored(), Shortcut::fromCombination(controlAltSpace));
    EXPECT_TRUE(isRegistered(controlAltSpace));
    EXPECT_FALSE(probe().has(QStringLiteral("hotkey.problem")));
}

TEST_F(HotkeyViewTest, AStoredCombinationThatProgramsPasteWithIsSaidAndAnotherOneOffered)
{
    world.shortcuts.setShortcut(Shortcut{9, carbon::control}, ShortcutName::dictate());
    UiWorld::settle();
    EXPECT_TRUE(probe().shows(HotkeyError::pastes().description()));
    EXPECT_TRUE(world.globalHotkeys.registered().isEmpty());
    probe().click(QStringLiteral("hotkey.useAlternative"));
    EXPECT_FALSE(probe().has(QStringLiteral("hotkey.problem")));
    EXPECT_FALSE(world.globalHotkeys.registered().isEmpty());
}

TEST_F(HotkeyViewTest, ACombinationThatWasGivenBackIsTakenAgain)
{
    world.globalHotkeys.takeElsewhere(altSpace);
    world.shortcuts.registerAgain();
    UiWorld::settle();
    probe().click(QStringLiteral("hotkey.tryAgain"));
    EXPECT_TRUE(probe().has(QStringLiteral("hotkey.problem"))) << "it is still held";
    world.globalHotkeys.freeElsewhere(altSpace);
    probe().click(QStringLiteral("hotkey.tryAgain"));
    EXPECT_FALSE(probe().has(QStringLiteral("hotkey.problem")));
    EXPECT_TRUE(isRegistered(altSpace));
}

TEST_F(HotkeyViewTest, WhereThereAreNoHotkeysNothingElseIsOffered)
{
    world.globalHotkeys.failRegistrations(
        HotkeyError::unsupported(QStringLiteral("Not here. Bind the command.")));
    world.shortcuts.registerAgain();
    UiWorld::settle();
    EXPECT_TRUE(probe().shows(QStringLiteral("Not here. Bind the command.")));
    EXPECT_FALSE(probe().has(QStringLiteral("hotkey.useAlternative")));
}

/// Opens the picker and takes the option so many below the chosen one.
void pick(WindowProbe& probe, int below)
{
    probe.click(QStringLiteral("hotkey.singleKey"));
    for (int i = 0; i < below; ++i)
        probe.press(Qt::Key_Down);
    probe.press(Qt::Key_Return);
}

TEST_F(HotkeyViewTest, ASingleKeyIsPickedAndWatched)
{
    pick(probe(), 1);
    EXPECT_EQ(world.settings.modifierHotkey(), ModifierHotkey::rightOption);
    EXPECT_EQ(world.modifiers.keyCodes(), std::vector<qint64>{61});
    EXPECT_FALSE(world.privacy.calls.contains(QStringLiteral("requestInputMonitoring")));
    EXPECT_TRUE(probe().shows(QStringLiteral("Input Monitoring granted")));
    EXPECT_FALSE(probe().has(QStringLiteral("hotkey.openInputMonitoring")));
    world.ui.models().hotkey()->setSingleKey(QStringLiteral("none"));
    UiWorld::settle();
    EXPECT_FALSE(probe().shows(QStringLiteral("Input Monitoring granted")));
}

TEST_F(HotkeyViewTest, EveryKeyIsOffered)
{
    const QVariantList offered = HotkeyViewModel::singleKeys();
    const auto keys = allCases<ModifierHotkey>();
    ASSERT_EQ(offered.size(), keys.size());
    for (qsizetype i = 0; i < keys.size(); ++i) {
        const QVariantMap option = offered.at(i).toMap();
        EXPECT_EQ(option.value(QStringLiteral("value")), rawValue(keys.at(i)));
        EXPECT_EQ(option.value(QStringLiteral("title")), title(keys.at(i)));
        world.ui.models().hotkey()->setSingleKey(rawValue(keys.at(i)));
        EXPECT_EQ(world.settings.modifierHotkey(), keys.at(i));
    }
    world.ui.models().hotkey()->setSingleKey(QStringLiteral("leftFoot"));
    EXPECT_EQ(world.settings.modifierHotkey(), ModifierHotkey::fn) << "an unknown value changes nothing";
}

TEST_F(HotkeyViewTest, LeaveToWatchTheKeyboardIsAskedForOnceByTheChoice)
{
    world.privacy.inputMonitoringGranted = false;
    world.permissions.refresh();
    const auto asked = [this] { return world.privacy.calls.count(QStringLiteral("requestInputMonitoring")); };
    pick(probe(), 1);
    EXPECT_EQ(asked(), 1);
    EXPECT_EQ(world.workspace.opened, QList<QUrl>{QUrl(PermissionsService::inputMonitoringPane)});
    world.scheduler.advance(std::chrono::seconds(3));
    world.ui.models().hotkey()->setSingleKey(QStringLiteral("rightOption"));
    EXPECT_EQ(asked(), 1);
    world.ui.models().hotkey()->setSingleKey(QStringLiteral("none"));
    EXPECT_EQ(asked(), 1) << "no key needs no leave";
}

TEST_F(HotkeyViewTest, MissingLeaveIsSaidWithItsReasonAndBothRepairs)
{
    world.privacy.inputMonitoringGranted = false;
    world.privacy.obstacles[Permission::inputMonitoring] = {QStringLiteral("No extension."),
                                                            QStringLiteral("Use a combination.")};
    world.permissions.refresh();
    EXPECT_FALSE(probe().has(QStringLiteral("hotkey.openInputMonitoring"))) << "nothing needs it yet";
    world.settings.modifierHotkey.set(ModifierHotkey::rightControl);
    UiWorld::settle();
    EXPECT_TRUE(probe().shows(QStringLiteral("No extension. Use a combination.")));
    EXPECT_TRUE(probe().shows(translate(
        "Use this if Tulvane is already switched on in System Settings but the permission still shows as "
        "missing (happens after updates).")));
    probe().click(QStringLiteral("hotkey.openInputMonitoring"));
    EXPECT_EQ(world.workspace.opened, QList<QUrl>{QUrl(PermissionsService::inputMonitoringPane)});
    world.privacy.grantOnRequest = true;
    probe().click(QStringLiteral("hotkey.resetInputMonitoring"));
    EXPECT_THAT(world.processes.commands, testing::ElementsAre(FakeProcesses::Command{
                                              QStringLiteral("/usr/bin/tccutil"),
                                              {QStringLiteral("reset"), QStringLiteral("ListenEvent"),
                                               QStringLiteral("com.dunio.Tulvane")}}));
    EXPECT_FALSE(probe().has(QStringLiteral("hotkey.openInputMonitoring")));
    EXPECT_TRUE(probe().shows(QStringLiteral("Input Monitoring granted")));
}

TEST_F(HotkeyViewTest, AKeyThatIsNeverSeenIsSaid)
{
    world.modifiers.failTaps(ModifierEventsError::keyNotSeen(QStringLiteral("fn")));
    world.settings.modifierHotkey.set(ModifierHotkey::fn);
    UiWorld::settle();
    EXPECT_TRUE(probe().shows(ModifierEventsError::keyNotSeen(QStringLiteral("fn")).description()));
    EXPECT_FALSE(probe().shows(QStringLiteral("Input Monitoring granted")));
}

TEST_F(HotkeyViewTest, ARefusedCombinationComesWithAFreeOne)
{
    world.globalHotkeys.setSymbolicHotkeys({{true, controlD, {}}, {true, altSpace, {}}});
    record();
    field().keyPressed(controlPlusD);
    UiWorld::settle();
    EXPECT_EQ(field().alternative(), QStringLiteral("Use ⌃⌥Space instead"));
    probe().click(QStringLiteral("hotkey.useFreeOne"));
    EXPECT_EQ(stored(), Shortcut::fromCombination(controlAltSpace));
    EXPECT_FALSE(field().isBusy());
    EXPECT_TRUE(isRegistered(controlAltSpace));
    EXPECT_FALSE(probe().has(QStringLiteral("hotkey.refusal")));
}

TEST_F(HotkeyViewTest, ReadingTheKeyboardIsNoMatterWhereTheDesktopTellsOfModifiers)
{
    EXPECT_FALSE(probe().has(QStringLiteral("hotkey.readKeyboard")));
}

} // namespace

/// On a desktop that tells programs of no single key.
class KeyboardReadingTest : public HotkeyViewFixture {
protected:
    KeyboardReadingTest() : HotkeyViewFixture([](UiWorld& made) { made.modifiers.setReadsEveryKey(true); }) {}
};

TEST_F(KeyboardReadingTest, WhatItMeansIsSaidFirstAndASingleKeyWaitsForLeave)
{
    EXPECT_TRUE(probe().shows(HotkeyViewModel::whatReadingMeans()));
    world.ui.models().hotkey()->setSingleKey(QStringLiteral("rightOption"));
    UiWorld::settle();
    EXPECT_EQ(world.modifiers.created(), 0);
    EXPECT_TRUE(probe().shows(translate(
        "On this desktop a single key needs your leave to read the keyboard. Give it in the settings.")));
    probe().click(QStringLiteral("hotkey.readKeyboard"));
    EXPECT_TRUE(world.settings.readsKeyboards());
    EXPECT_TRUE(world.modifiers.hasOneEnabledTap());
    EXPECT_TRUE(probe().shows(QStringLiteral("Input Monitoring granted")));
    probe().click(QStringLiteral("hotkey.readKeyboard"));
    EXPECT_FALSE(world.settings.readsKeyboards());
    EXPECT_TRUE(world.modifiers.keyCodes().empty());
}

namespace {

} // namespace

} // namespace tulvane::test
