#include "PageFixture.h"

#include <audio/RecorderError.h>
#include <ui/viewmodels/ViewModels.h>

#include <QAccessible>

#include <gmock/gmock.h>

namespace tulvane::test {

namespace {

using namespace std::chrono_literals;
using testing::Contains;
using testing::IsEmpty;

class HomePageTest : public PageFixture {
protected:
    void setUpProgram()
    {
        world.installModel(world.settings.selectedModelID());
        UiWorld::settle();
    }
    void dictate(int count)
    {
        for (int i = 1; i <= count; ++i)
            world.dictate(QStringLiteral("nummer %1").arg(i));
    }
    static void fail(UiWorld& world)
    {
        world.engine.transcribeError = EngineError::transcriptionFailed(-6);
        world.controller.start();
        static_cast<void>(world.input.push(std::vector<float>(16000, 0.5F)));
        world.controller.stop();
        UiWorld::settle();
        world.engine.transcribeError.reset();
    }
};

TEST_F(HomePageTest, ShowsEverythingOfAFreshProgram)
{
    WindowProbe& probe = open(SettingsTab::home);
    for (const char* text :
         {"Good afternoon", "Setup required", "Press", "⌥", "Space", "and speak into any text field",
          "Daily streak", "Average speed", "Total words dictated", "Everything stays on your computer",
          "Audio is recorded only while the hotkey is active and transcribed locally by NB-Whisper. No "
          "account, no cloud, no transcripts on disk.",
          "Private", "How it works", "Hide", "Recent dictations", "No dictations yet",
          "Press the hotkey, say something, and your transcripts show up here."})
        EXPECT_TRUE(probe.shows(QString::fromUtf8(text))) << text;
    EXPECT_FALSE(probe.has(QStringLiteral("home.viewAll")));
    EXPECT_FALSE(probe.has(QStringLiteral("home.retry")));
    EXPECT_FALSE(probe.has(QStringLiteral("home.notice.copy")));
}

TEST_F(HomePageTest, TheGreetingIsReadAgainWhenThePageOrItsWindowComesIntoView)
{
    WindowProbe& probe = open(SettingsTab::home);
    EXPECT_TRUE(probe.shows(QStringLiteral("Good afternoon")));
    world.clock.advance(6h);
    window().hide();
    world.ui.showPage(SettingsTab::home);
    UiWorld::settle();
    EXPECT_TRUE(probe.shows(QStringLiteral("Good evening")));
    world.clock.advance(12h);
    probe.click(QStringLiteral("sidebar.about"));
    probe.click(QStringLiteral("sidebar.home"));
    EXPECT_TRUE(probe.shows(QStringLiteral("Good morning")));
}

TEST_F(HomePageTest, TheStatusIsThatOfTheDictation)
{
    setUpProgram();
    WindowProbe& probe = open(SettingsTab::home);
    EXPECT_TRUE(probe.shows(QStringLiteral("Ready")));
    world.controller.start();
    UiWorld::settle();
    EXPECT_TRUE(probe.shows(QStringLiteral("Listening…")));
    EXPECT_FALSE(probe.shows(QStringLiteral("Ready")));
    world.controller.cancel(QStringLiteral("Too short"));
    UiWorld::settle();
    EXPECT_TRUE(probe.shows(QStringLiteral("Too short")));
}

TEST_F(HomePageTest, BothHotkeysAreShownWithOneWordBetweenThem)
{
    world.settings.modifierHotkey.set(ModifierHotkey::rightControl);
    world.settings.hotkeyMode.set(HotkeyMode::hybrid);
    WindowProbe& probe = open(SettingsTab::home);
    EXPECT_TRUE(probe.shows(QStringLiteral("Hold down")));
    EXPECT_TRUE(probe.shows(QStringLiteral("or")));
    EXPECT_TRUE(probe.shows(QStringLiteral("Right Ctrl")));
}

TEST_F(HomePageTest, WithoutAHotkeyTheSettingsAreOneClickAway)
{
    world.shortcuts.setShortcut(std::nullopt, ShortcutName::dictate());
    WindowProbe& probe = open(SettingsTab::home);
    EXPECT_TRUE(probe.shows(QStringLiteral("No hotkey yet –")));
    EXPECT_FALSE(probe.shows(QStringLiteral("and speak into any text field")));
    probe.click(QStringLiteral("home.chooseHotkey"));
    EXPECT_EQ(shownPage(), SettingsTab::settings);
}

TEST_F(HomePageTest, OfFiveDictationsFourAreListedAndViewAllLeadsToAllFive)
{
    setUpProgram();
    dictate(5);
    WindowProbe& probe = open(SettingsTab::home);
    EXPECT_TRUE(probe.shows(QStringLiteral("Nummer 5")));
    EXPECT_TRUE(probe.shows(QStringLiteral("Nummer 2")));
    EXPECT_FALSE(probe.shows(QStringLiteral("Nummer 1")));
    EXPECT_FALSE(probe.shows(QStringLiteral("No dictations yet")));
    probe.click(QStringLiteral("home.viewAll"));
    EXPECT_EQ(shownPage(), SettingsTab::history);
    for (int i = 1; i <= 5; ++i)
        EXPECT_TRUE(probe.shows(QStringLiteral("Nummer %1").arg(i)));
}

TEST_F(HomePageTest, ALinkIsALinkForAScreenReader)
{
    setUpProgram();
    dictate(1);
    WindowProbe& probe = open(SettingsTab::home);
    // The controls of the toolkit take on their own roles when the first screen reader comes.
    QAccessible::setActive(true);
    QAccessibleInterface* const link =
        QAccessible::queryAccessibleInterface(&probe.item(QStringLiteral("home.viewAll")));
    EXPECT_EQ(link->role(), QAccessible::Link);
    EXPECT_EQ(link->text(QAccessible::Name), u"View all");
    EXPECT_TRUE(link->state().focusable);
    QAccessible::setActive(false);
}

TEST_F(HomePageTest, AssistiveProgramsPressItsButtons)
{
    setUpProgram();
    dictate(2);
    WindowProbe& probe = open(SettingsTab::home);
    QAccessible::setActive(true);
    QAccessibleInterface* const button =
        QAccessible::queryAccessibleInterface(&probe.item(QStringLiteral("home.copy.0")));
    ASSERT_NE(button->actionInterface(), nullptr);
    button->actionInterface()->doAction(QAccessibleActionInterface::pressAction());
    QAccessible::setActive(false);
    EXPECT_EQ(world.boards.generalBoard.text(), u"Nummer 2 ");
}

TEST_F(HomePageTest, ANewDictationAppearsAtTheTop)
{
    setUpProgram();
    dictate(4);
    WindowProbe& probe = open(SettingsTab::home);
    world.dictate(QStringLiteral("helt ny"));
    EXPECT_TRUE(probe.shows(QStringLiteral("Helt ny")));
    EXPECT_FALSE(probe.shows(QStringLiteral("Nummer 1")));
    probe.click(QStringLiteral("home.copy.0"));
    EXPECT_EQ(world.boards.generalBoard.text(), u"Helt ny ");
    EXPECT_FALSE(probe.has(QStringLiteral("home.copy.4")));
}

TEST_F(HomePageTest, OnceAllIsDoneTheDictationsFollowTheStatusAndTheChecklistIsALine)
{
    world.fill();
    WindowProbe& probe = open(SettingsTab::home);
    const QStringList texts = probe.texts();
    EXPECT_LT(texts.indexOf(QStringLiteral("Recent dictations")),
              texts.indexOf(QStringLiteral("Daily streak")));
    EXPECT_TRUE(texts.contains(QStringLiteral("7/7 steps completed")));
    EXPECT_FALSE(probe.has(QStringLiteral("setup.mic")));
    probe.click(QStringLiteral("setup.fold"));
    EXPECT_TRUE(probe.has(QStringLiteral("setup.mic")));
    EXPECT_EQ(focused(), u"setup.hide");
    // Something is left to do again: the checklist comes first again.
    world.settings.vocabularyPrompt.set(QString());
    UiWorld::settle();
    const QStringList then = probe.texts();
    EXPECT_GT(then.indexOf(QStringLiteral("Recent dictations")),
              then.indexOf(QStringLiteral("6/7 steps completed")));
}

TEST_F(HomePageTest, TheGreetingIsReadAgainWhileTheWindowStaysInFront)
{
    WindowProbe& probe = open(SettingsTab::home);
    window().requestActivate();
    world.clock.advance(6h);
    world.ui.models().home()->followClock();
    UiWorld::settle();
    EXPECT_TRUE(probe.shows(QStringLiteral("Good evening")));
}

TEST_F(HomePageTest, TheMicrophoneIsNamedAndItsLevelShownWhileADictationListens)
{
    setUpProgram();
    world.input.setDeviceName(QStringLiteral("USB Microphone"));
    WindowProbe& probe = open(SettingsTab::home);
    EXPECT_TRUE(probe.shows(QStringLiteral("USB Microphone")));
    world.controller.start();
    static_cast<void>(world.input.push(std::vector<float>(16000, 0.5F)));
    UiWorld::settle();
    EXPECT_GT(probe.item(QStringLiteral("home.meter")).property("level").toReal(), 0.1);
    EXPECT_FALSE(probe.item(QStringLiteral("home.testMicrophone")).isEnabled());
    world.controller.cancel();
    UiWorld::settle();
    EXPECT_EQ(probe.item(QStringLiteral("home.meter")).property("level").toReal(), 0);
    EXPECT_TRUE(probe.item(QStringLiteral("home.testMicrophone")).isEnabled());
}

TEST_F(HomePageTest, TheMicrophoneIsTestedForThreeSecondsAndNothingIsKept)
{
    setUpProgram();
    WindowProbe& probe = open(SettingsTab::home);
    probe.click(QStringLiteral("home.testMicrophone"));
    EXPECT_TRUE(probe.shows(QStringLiteral("Say something…")));
    EXPECT_TRUE(world.input.isOpen());
    static_cast<void>(world.input.push(std::vector<float>(16000, 0.5F)));
    UiWorld::settle();
    EXPECT_GT(probe.item(QStringLiteral("home.meter")).property("level").toReal(), 0.1);
    world.scheduler.advance(3s);
    UiWorld::settle();
    EXPECT_FALSE(world.input.isOpen());
    EXPECT_TRUE(probe.shows(QStringLiteral("The microphone hears you.")));
    EXPECT_EQ(world.session.history().size(), 0);
    EXPECT_EQ(world.controller.phase(), Phase());

    probe.click(QStringLiteral("home.testMicrophone"));
    world.scheduler.advance(3s);
    UiWorld::settle();
    EXPECT_TRUE(
        probe.shows(QStringLiteral("Nothing was heard. Is it muted, or is another microphone meant?")));
}

TEST_F(HomePageTest, ATestEndsWithThePageAndWithADictation)
{
    setUpProgram();
    WindowProbe& probe = open(SettingsTab::home);
    probe.click(QStringLiteral("home.testMicrophone"));
    probe.click(QStringLiteral("sidebar.about"));
    EXPECT_FALSE(world.input.isOpen());
    probe.click(QStringLiteral("sidebar.home"));
    probe.click(QStringLiteral("home.testMicrophone"));
    world.controller.start();
    UiWorld::settle();
    EXPECT_FALSE(world.microphoneTest.isRunning());
    EXPECT_EQ(world.controller.phase().kind, Phase::Kind::recording);
    world.controller.cancel();
}

TEST_F(HomePageTest, WithoutAMicrophoneThatIsSaid)
{
    world.input.setDeviceName({});
    world.input.setFormat({});
    WindowProbe& probe = open(SettingsTab::home);
    EXPECT_TRUE(probe.shows(QStringLiteral("No microphone")));
    probe.click(QStringLiteral("home.testMicrophone"));
    EXPECT_TRUE(probe.shows(RecorderError::noInputDevice().description()));
}

TEST_F(HomePageTest, ThePrivacyCardExplainsAndHides)
{
    WindowProbe& probe = open(SettingsTab::home);
    probe.click(QStringLiteral("home.privacy.howItWorks"));
    EXPECT_EQ(shownPage(), SettingsTab::about);
    probe.click(QStringLiteral("sidebar.home"));
    probe.click(QStringLiteral("home.privacy.hide"));
    EXPECT_TRUE(world.settings.hidePrivacyCard());
    EXPECT_FALSE(probe.has(QStringLiteral("home.privacy")));
    EXPECT_FALSE(probe.shows(QStringLiteral("Private")));
}

TEST_F(HomePageTest, AFailedTranscriptionIsTriedAgainHere)
{
    setUpProgram();
    WindowProbe& probe = open(SettingsTab::home);
    fail(world);
    EXPECT_TRUE(probe.shows(QStringLiteral("The last dictation could not be transcribed")));
    EXPECT_TRUE(probe.shows(EngineError::transcriptionFailed(-6).description())) << "as the status";
    world.engine.text = QStringLiteral("reddet");
    probe.click(QStringLiteral("home.retry"));
    EXPECT_FALSE(probe.has(QStringLiteral("home.retry")));
    EXPECT_TRUE(probe.shows(QStringLiteral("Reddet")));
    EXPECT_EQ(world.boards.generalBoard.text(), u"Reddet ");
    EXPECT_TRUE(probe.shows(QStringLiteral("The last text was not inserted")));
}

TEST_F(HomePageTest, ATextThatWasNotInsertedCanBeCopiedAndTheNoticeHidden)
{
    setUpProgram();
    world.privacy.accessibilityGranted = false;
    world.dictate(QStringLiteral("borte"));
    WindowProbe& probe = open(SettingsTab::home);
    EXPECT_TRUE(probe.shows(QStringLiteral("It was put on the clipboard: paste it where you want it.")));
    world.boards.generalBoard.otherProgramWrites(QStringLiteral("other"));
    probe.click(QStringLiteral("home.notice.copy"));
    EXPECT_EQ(world.boards.generalBoard.text(), u"Borte ");
    EXPECT_EQ(nameOf(probe.item(QStringLiteral("home.notice.copy"))), u"Copied");
    probe.click(QStringLiteral("home.notice.hide"));
    EXPECT_FALSE(probe.has(QStringLiteral("home.notice.copy")));
}

TEST_F(HomePageTest, ACardThatFailedIsSaidOnceAndHidden)
{
    setUpProgram();
    WindowProbe& probe = open(SettingsTab::home);
    const auto notice = QStringLiteral("The graphics card failed");
    EXPECT_FALSE(probe.shows(notice));
    const ComputingPlace failed{.device = {}, .reason = QStringLiteral("it crashed"), .isGivenUp = true};
    world.computing.publish(failed);
    UiWorld::settle();
    EXPECT_TRUE(probe.shows(notice));
    probe.click(QStringLiteral("home.cardFailed.hide"));
    UiWorld::settle();
    EXPECT_FALSE(probe.shows(notice));
    // The next model is loaded where the last one was.
    world.computing.publish(failed);
    UiWorld::settle();
    EXPECT_FALSE(probe.shows(notice));
}

TEST_F(HomePageTest, AHotkeyThatDoesNotWorkLeadsToTheSettings)
{
    world.globalHotkeys.failRegistrations(HotkeyError::taken(1));
    world.shortcuts.setShortcut(Shortcut{2, 0x800}, ShortcutName::dictate());
    WindowProbe& probe = open(SettingsTab::home);
    EXPECT_TRUE(probe.shows(QStringLiteral("⌥D does not work as the hotkey")));
    EXPECT_TRUE(probe.shows(HotkeyError::taken(1).description()));
    probe.click(QStringLiteral("home.brokenHotkey"));
    EXPECT_EQ(shownPage(), SettingsTab::settings);
}

TEST_F(HomePageTest, TheChecklistsPlaceGoesWithItsSetting)
{
    WindowProbe& probe = open(SettingsTab::home);
    EXPECT_TRUE(probe.has(QStringLiteral("home.setup")));
    world.settings.hideSetupChecklist.set(true);
    UiWorld::settle();
    EXPECT_FALSE(probe.has(QStringLiteral("home.setup")));
}

TEST_F(HomePageTest, TheKeyboardReachesEveryControlAndPressesIt)
{
    setUpProgram();
    dictate(2);
    world.privacy.accessibilityGranted = false;
    world.dictate(QStringLiteral("borte"));
    WindowProbe& probe = open(SettingsTab::home);
    const QStringList order = probe.tabOrder();
    for (const char* name : {"Copy", "Hide", "How it works", "View all"})
        EXPECT_THAT(order, Contains(QString::fromUtf8(name))) << name;
    EXPECT_EQ(order.count(QStringLiteral("Copy")), 4) << "three rows and the notice";
    EXPECT_FALSE(order.contains(QString()));

    probe.item(QStringLiteral("home.copy.1")).forceActiveFocus(Qt::TabFocusReason);
    probe.press(Qt::Key_Return);
    EXPECT_EQ(world.boards.generalBoard.text(), u"Nummer 2 ");
    probe.item(QStringLiteral("home.viewAll")).forceActiveFocus(Qt::TabFocusReason);
    probe.press(Qt::Key_Space);
    EXPECT_EQ(shownPage(), SettingsTab::history);
}

TEST_F(HomePageTest, NothingIsCutOffOrOverlaps)
{
    EXPECT_THAT(flawsIn(SettingsTab::home, [](UiWorld&) {}), IsEmpty());
    EXPECT_THAT(flawsIn(SettingsTab::home,
                        [](UiWorld& one) {
                            one.fill();
                            one.privacy.accessibilityGranted = false;
                            one.dictate(QStringLiteral("Denne kom ikke frem."));
                            one.globalHotkeys.failRegistrations(HotkeyError::taken(1));
                            one.shortcuts.setShortcut(Shortcut{2, 0x800}, ShortcutName::dictate());
                        }),
                IsEmpty());
    EXPECT_THAT(flawsIn(SettingsTab::home,
                        [](UiWorld& one) {
                            one.fill();
                            fail(one);
                        }),
                IsEmpty());
}

} // namespace

} // namespace tulvane::test
