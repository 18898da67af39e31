#include <dictation/DictationController.h>
#include <support/ui/UiWorld.h>
#include <ui/viewmodels/ViewModels.h>

#include <QSignalSpy>

#include <gmock/gmock.h>

namespace tulvane::test {

namespace {

using namespace std::chrono_literals;
using testing::ElementsAre;

class HomeViewModelTest : public ::testing::Test {
protected:
    [[nodiscard]] HomeViewModel& home() { return *world.ui.models().home(); }
    [[nodiscard]] HomeNotices& notices() { return *world.ui.models().notices(); }
    void setTime(int hour, int minute)
    {
        world.clock.setNow(QDateTime(QDate(2026, 11, 20), QTime(hour, minute), QTimeZone("Europe/Oslo")));
    }
    /// Everything a dictation needs.
    void setUpProgram()
    {
        world.installModel(world.settings.selectedModelID());
        UiWorld::settle();
    }
    /// The model is there, and its load has begun.
    void beginLoading()
    {
        world.engine.isPrompt = false;
        setUpProgram();
        world.engine.step(); // the question which model is loaded
        UiWorld::settle();
    }
    void failToTranscribe()
    {
        world.engine.transcribeError = EngineError::transcriptionFailed(-6);
        world.controller.start();
        ASSERT_TRUE(world.input.push(std::vector<float>(16000, 0.5F)));
        world.controller.stop();
        UiWorld::settle();
        world.engine.transcribeError.reset();
    }

    UiWorld world;
};

TEST_F(HomeViewModelTest, GreetsByTheHour)
{
    const auto greetingAt = [this](int hour, int minute) {
        setTime(hour, minute);
        return home().greeting();
    };
    EXPECT_EQ(greetingAt(4, 59), u"Good evening");
    EXPECT_EQ(greetingAt(5, 0), u"Good morning");
    EXPECT_EQ(greetingAt(11, 59), u"Good morning");
    EXPECT_EQ(greetingAt(12, 0), u"Good afternoon");
    EXPECT_EQ(greetingAt(17, 59), u"Good afternoon");
    EXPECT_EQ(greetingAt(18, 0), u"Good evening");
    EXPECT_EQ(greetingAt(23, 59), u"Good evening");
    EXPECT_EQ(greetingAt(0, 0), u"Good evening");
}

TEST_F(HomeViewModelTest, ARefreshTellsOfWhatTheClockDecides)
{
    QSignalSpy greeting(&home(), &HomeViewModel::refreshed);
    QSignalSpy cards(&home(), &HomeViewModel::cardsChanged);
    home().refresh();
    EXPECT_EQ(greeting.count(), 1);
    EXPECT_EQ(cards.count(), 1);
}

TEST_F(HomeViewModelTest, TheStatusOfAnIdleProgramIsItsReadiness)
{
    QSignalSpy changes(&home(), &HomeViewModel::statusChanged);
    EXPECT_EQ(home().status(), u"Setup required");
    EXPECT_EQ(home().tone(), DictationStatus::Kind::Setup);

    beginLoading();
    EXPECT_EQ(home().status(), u"Loading model…");
    EXPECT_EQ(home().tone(), DictationStatus::Kind::Loading);
    while (world.engine.waiting() > 0) {
        world.engine.step();
        UiWorld::settle();
    }
    EXPECT_EQ(home().status(), u"Ready");
    EXPECT_EQ(home().tone(), DictationStatus::Kind::Ready);
    EXPECT_GE(changes.count(), 3);

    changes.clear();
    world.privacy.microphoneAccess = MicrophoneAccess::denied;
    world.permissions.refresh();
    EXPECT_EQ(home().status(), u"Setup required");
    EXPECT_EQ(changes.count(), 1);
}

TEST_F(HomeViewModelTest, WithoutReadinessALoadingModelIsNotTold)
{
    beginLoading();
    ASSERT_TRUE(world.session.isModelLoading());
    world.privacy.microphoneAccess = MicrophoneAccess::denied;
    world.permissions.refresh();
    EXPECT_EQ(home().status(), u"Setup required");
}

TEST_F(HomeViewModelTest, TheStatusFollowsADictation)
{
    setUpProgram();
    QStringList seen;
    QObject::connect(&home(), &HomeViewModel::statusChanged, [&] {
        if (seen.isEmpty() || seen.last() != home().status())
            seen.append(home().status());
    });
    world.dictate(QStringLiteral("hei"));
    EXPECT_THAT(seen, ElementsAre(QStringLiteral("Listening…"), QStringLiteral("Transcribing…"),
                                  QStringLiteral("Inserting…"), QStringLiteral("Ready")));
    world.controller.start();
    EXPECT_EQ(home().tone(), DictationStatus::Kind::Recording);
}

TEST_F(HomeViewModelTest, AMessageIsTheStatusWhileItIsShown)
{
    setUpProgram();
    world.controller.showNotice(QStringLiteral("Too short"));
    EXPECT_EQ(home().status(), u"Too short");
    EXPECT_EQ(home().tone(), DictationStatus::Kind::Notice);
    world.controller.showError(QStringLiteral("It broke."));
    EXPECT_EQ(home().status(), u"It broke.");
    EXPECT_EQ(home().tone(), DictationStatus::Kind::Error);
    world.scheduler.advance(3s);
    EXPECT_EQ(home().status(), u"Ready");
}

TEST_F(HomeViewModelTest, TheHotkeyIsShownAsItsCapsAfterWhatToDoWithIt)
{
    QSignalSpy changes(&home(), &HomeViewModel::hotkeyChanged);
    world.settings.hotkeyMode.set(HotkeyMode::toggle);
    EXPECT_EQ(home().hotkeyVerb(), u"Press");
    world.settings.hotkeyMode.set(HotkeyMode::hold);
    EXPECT_EQ(home().hotkeyVerb(), u"Hold down");
    world.settings.hotkeyMode.set(HotkeyMode::hybrid);
    EXPECT_EQ(home().hotkeyVerb(), u"Hold down");
    EXPECT_EQ(changes.count(), 3);

    EXPECT_EQ(home().hotkeys(), QVariantList{QStringList({QStringLiteral("⌥"), QStringLiteral("Space")})});
    world.settings.modifierHotkey.set(ModifierHotkey::fn);
    EXPECT_EQ(home().hotkeys().size(), 2);
    EXPECT_EQ(home().hotkeys().last(), QStringList(title(ModifierHotkey::fn)));
    changes.clear();
    world.shortcuts.setShortcut(std::nullopt, ShortcutName::dictate());
    EXPECT_GE(changes.count(), 1);
    EXPECT_EQ(home().hotkeys().size(), 1);
    EXPECT_TRUE(home().hasHotkey());
    world.settings.modifierHotkey.set(ModifierHotkey::none);
    EXPECT_FALSE(home().hasHotkey());
}

TEST_F(HomeViewModelTest, TheCardsFollowTheStatisticsAndTheTypingSpeed)
{
    QSignalSpy changes(&home(), &HomeViewModel::cardsChanged);
    const auto field = [this](int card, const char* name) {
        return home().cards().at(card).toMap().value(QString::fromLatin1(name)).toString();
    };
    EXPECT_EQ(field(0, "title"), u"Daily streak");
    EXPECT_EQ(field(1, "title"), u"Average speed");
    EXPECT_EQ(field(2, "title"), u"Total words dictated");
    EXPECT_EQ(field(2, "subtitle"), u"Your first words land here");
    world.stats.record(QStringLiteral("ord ").repeated(50), world.clock.now(), 30);
    EXPECT_EQ(changes.count(), 1);
    EXPECT_EQ(field(0, "value"), u"1");
    EXPECT_EQ(field(1, "value"), u"100 WPM");
    EXPECT_EQ(field(1, "subtitle"), u"That's 2.5× faster than typing");
    EXPECT_EQ(field(2, "subtitle"), u"45 s saved vs. typing");
    world.settings.typingWordsPerMinute.set(100);
    EXPECT_EQ(changes.count(), 2);
    EXPECT_EQ(field(2, "subtitle"), u"0 s saved vs. typing");
    for (int card = 0; card < 3; ++card)
        EXPECT_FALSE(field(card, "symbol").isEmpty());
}

TEST_F(HomeViewModelTest, TheSettingsDecideOnChecklistAndPrivacyCard)
{
    QSignalSpy setup(&home(), &HomeViewModel::setupShownChanged);
    QSignalSpy privacy(&home(), &HomeViewModel::privacyShownChanged);
    EXPECT_TRUE(home().showsSetup());
    EXPECT_TRUE(home().showsPrivacy());
    world.settings.hideSetupChecklist.set(true);
    EXPECT_FALSE(home().showsSetup());
    home().hidePrivacy();
    EXPECT_FALSE(home().showsPrivacy());
    EXPECT_TRUE(world.settings.hidePrivacyCard());
    EXPECT_EQ(setup.count(), 1);
    EXPECT_EQ(privacy.count(), 1);
}

TEST_F(HomeViewModelTest, AFailedTranscriptionCanBeTriedAgainAndGoesToTheClipboard)
{
    setUpProgram();
    HomeNotices& notices = this->notices();
    QSignalSpy changes(&notices, &HomeNotices::retryChanged);
    EXPECT_FALSE(notices.canRetry());
    failToTranscribe();
    EXPECT_TRUE(notices.canRetry());
    EXPECT_GE(changes.count(), 1);
    EXPECT_TRUE(notices.failure().startsWith(EngineError::transcriptionFailed(-6).description()));
    EXPECT_TRUE(notices.failure().contains(QStringLiteral("kept in memory")));
    world.scheduler.advance(3s);
    EXPECT_TRUE(notices.canRetry()) << "longer than the message";
    EXPECT_TRUE(notices.failure().startsWith(EngineError::transcriptionFailed(-6).description()));

    world.engine.text = QStringLiteral("hei på deg");
    notices.retry();
    UiWorld::settle();
    EXPECT_FALSE(notices.canRetry());
    EXPECT_EQ(world.boards.generalBoard.text(), u"Hei på deg ");
    EXPECT_EQ(world.keys.pastes(), 0) << "our own window is in front";
    EXPECT_EQ(home().recent()->count(), 1);
    EXPECT_TRUE(notices.isTextLeft());
}

TEST_F(HomeViewModelTest, AFailureFromBeforeThePageWasMadeIsOfferedToo)
{
    setUpProgram();
    failToTranscribe();
    world.scheduler.advance(3s);
    EXPECT_TRUE(notices().canRetry());
    EXPECT_TRUE(notices().failure().contains(QStringLiteral("kept in memory")));
}

TEST_F(HomeViewModelTest, ANewRecordingEndsTheOffer)
{
    setUpProgram();
    failToTranscribe();
    EXPECT_TRUE(notices().canRetry());
    world.controller.start();
    EXPECT_FALSE(notices().canRetry());
    EXPECT_FALSE(notices().failure().contains(EngineError::transcriptionFailed(-6).description()));
}

TEST_F(HomeViewModelTest, ATextThatCouldNotBeInsertedSaysWhereItIs)
{
    setUpProgram();
    HomeNotices& notices = this->notices();
    QSignalSpy changes(&notices, &HomeNotices::textLeftChanged);
    world.dictate(QStringLiteral("Denne kom frem."));
    EXPECT_FALSE(notices.isTextLeft());
    world.privacy.accessibilityGranted = false;
    world.dictate(QStringLiteral("Denne kom ikke frem."));
    EXPECT_TRUE(notices.isTextLeft());
    EXPECT_GE(changes.count(), 1);

    // Something else was copied since.
    world.boards.generalBoard.otherProgramWrites(QStringLiteral("other"));
    EXPECT_EQ(notices.copyLabel(), u"Copy");
    notices.copyLastText();
    EXPECT_EQ(world.boards.generalBoard.text(), u"Denne kom ikke frem. ");
    EXPECT_EQ(notices.copyLabel(), u"Copied");
    world.scheduler.advance(1500ms);
    EXPECT_EQ(notices.copyLabel(), u"Copy");

    notices.hideTextLeft();
    EXPECT_FALSE(notices.isTextLeft());
    world.dictate(QStringLiteral("Denne heller ikke."));
    EXPECT_TRUE(notices.isTextLeft()) << "hiding one says nothing of the next";
    world.privacy.accessibilityGranted = true;
    world.dictate(QStringLiteral("Denne kom frem igjen."));
    EXPECT_FALSE(notices.isTextLeft());
}

TEST_F(HomeViewModelTest, WhatWasLostOfTheClipboardIsTold)
{
    setUpProgram();
    HomeNotices& notices = this->notices();
    world.boards.generalBoard.otherProgramWrites(QStringLiteral("other"));
    world.dictate(QStringLiteral("Ingenting gikk tapt."));
    EXPECT_FALSE(notices.isClipboardLost());
    world.boards.generalBoard.hangOwner();
    world.dictate(QStringLiteral("Denne kostet noe."));
    EXPECT_TRUE(notices.isClipboardLost());
    notices.hideTextLeft();
    EXPECT_FALSE(notices.isClipboardLost());
    world.dictate(QStringLiteral("Denne også."));
    EXPECT_TRUE(notices.isClipboardLost());
    world.boards.generalBoard.freeOwner();
    world.dictate(QStringLiteral("Denne ikke."));
    EXPECT_FALSE(notices.isClipboardLost());
}

TEST_F(HomeViewModelTest, WhoHasChosenTheClipboardIsNotTold)
{
    setUpProgram();
    world.settings.insertionMethod.set(InsertionMethod::clipboardOnly);
    world.dictate(QStringLiteral("hei"));
    EXPECT_FALSE(notices().isTextLeft());
}

TEST_F(HomeViewModelTest, AHotkeyThatDoesNotWorkIsTold)
{
    HomeNotices& notices = this->notices();
    EXPECT_TRUE(notices.brokenHotkey().isEmpty());
    QSignalSpy changes(&notices, &HomeNotices::hotkeyChanged);
    world.globalHotkeys.failRegistrations(HotkeyError::taken(1));
    world.shortcuts.setShortcut(Shortcut{2, 0x800}, ShortcutName::dictate());
    EXPECT_EQ(notices.brokenHotkey(), u"⌥D does not work as the hotkey");
    EXPECT_EQ(notices.brokenHotkeyReason(), HotkeyError::taken(1).description());
    EXPECT_GE(changes.count(), 1);
    world.globalHotkeys.failRegistrations(std::nullopt);
    world.shortcuts.registerAgain();
    EXPECT_TRUE(notices.brokenHotkey().isEmpty());
    EXPECT_TRUE(notices.brokenHotkeyReason().isEmpty());

    world.modifiers.failTaps(ModifierEventsError::notPermitted());
    world.settings.modifierHotkey.set(ModifierHotkey::rightControl);
    EXPECT_EQ(notices.brokenHotkey(), u"Right Ctrl does not work as the hotkey");
    EXPECT_EQ(notices.brokenHotkeyReason(), ModifierEventsError::notPermitted().description());
}

} // namespace

} // namespace tulvane::test
