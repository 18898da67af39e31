#include "OnboardingFixture.h"

#include <gmock/gmock.h>

namespace tulvane::test {

namespace {

using testing::Contains;
using testing::IsEmpty;

TEST_F(OnboardingTest, TheWindowIsBuiltOnceAndReused)
{
    EXPECT_EQ(world.ui.onboardingWindow().window(), nullptr);
    world.ui.showOnboarding();
    QQuickView* const first = &window();
    EXPECT_TRUE(first->isVisible());
    EXPECT_EQ(first->title(), QStringLiteral("Set up Tulvane"));
    EXPECT_EQ(first->size(), QSize(620, 720));
    EXPECT_EQ(first->minimumWidth(), 620);
    EXPECT_EQ(first->maximumWidth(), 620);
    first->close();
    EXPECT_FALSE(first->isVisible());
    world.ui.showOnboarding();
    EXPECT_EQ(&window(), first);
    EXPECT_TRUE(first->isVisible());
}

TEST_F(OnboardingTest, TheFrameIsKeptUnderItsName)
{
    world.defaults.set(QStringLiteral("NSWindow Frame SetupWindow"),
                       QStringLiteral("100 60 620 600 0 0 800 800 "));
    world.ui.showOnboarding();
    EXPECT_EQ(window().size(), QSize(620, 600));
}

TEST_F(OnboardingTest, OpensInTheMiddleOfWhatItsTitleBarLeaves)
{
    // The offscreen screen is 800 x 800, and the platform draws a frame of a few pixels.
    world.ui.showOnboarding();
    EXPECT_NEAR(window().y(), 36 + (764 - 720) / 2, 4);
}

TEST_F(OnboardingTest, AlsoAFrameThatWasKeptAtTheUpperEdgeHasRoomForItsTitleBar)
{
    world.defaults.set(QStringLiteral("NSWindow Frame SetupWindow"),
                       QStringLiteral("100 0 620 800 0 0 800 800 "));
    world.ui.showOnboarding();
    EXPECT_GE(window().y(), 32);
    EXPECT_LE(window().y() + window().height(), 804);
}

TEST_F(OnboardingTest, SaysWhatItIsAbout)
{
    QStringList shown;
    for (int number = 1; number <= 4; ++number) {
        open(number);
        shown += probe().texts();
    }
    for (const char* text :
         {"Welcome to Tulvane",
          "Press a hotkey, speak Norwegian, and the text appears where your cursor is. Everything runs on "
          "your "
          "Mac.",
          "Set up in four steps", "Microphone", "Accessibility", "Speech model", "Hotkey",
          "Records your voice only while the hotkey is active. Audio stays on this Mac and is never "
          "uploaded.",
          "Lets Tulvane type the transcribed text into whatever app you are using (it presses ⌘V for you).",
          "NB-Whisper Medium from the National Library of Norway runs fully on-device. One-time download of "
          "about 540 MB.",
          "Other variants (full precision, verbatim, semantic) are available under Models in the main "
          "window."})
        EXPECT_TRUE(shown.contains(translate(text))) << text;
    EXPECT_TRUE(probe().shows(QStringLiteral("0/4 completed")));
    for (int number = 1; number <= 4; ++number)
        EXPECT_EQ(state(number), QStringLiteral("To do"));
}

TEST_F(OnboardingTest, TheStepsAreNumberedInTheirOrder)
{
    const QStringList titles{QStringLiteral("Microphone"), QStringLiteral("Accessibility"),
                             QStringLiteral("Speech model"), QStringLiteral("Hotkey")};
    const QStringList symbols{QStringLiteral("mic.fill"), QStringLiteral("accessibility"),
                              QStringLiteral("waveform"), QStringLiteral("keyboard")};
    const auto steps = guide().steps();
    ASSERT_EQ(steps.size(), 4);
    for (qsizetype i = 0; i < 4; ++i) {
        EXPECT_EQ(steps.at(i).number, i + 1);
        EXPECT_EQ(steps.at(i).title, titles.at(i));
        EXPECT_EQ(steps.at(i).symbol, symbols.at(i));
        EXPECT_EQ(steps.at(i).state, SetupStepState::todo);
    }
}

TEST_F(OnboardingTest, TheMicrophoneIsAskedForOnceAndThenGranted)
{
    EXPECT_FALSE(probe().has(QStringLiteral("onboarding.openMicrophone")));
    probe().click(QStringLiteral("onboarding.allowMicrophone"));
    EXPECT_EQ(world.privacy.calls.count(QStringLiteral("requestMicrophone")), 1);
    EXPECT_TRUE(world.workspace.opened.isEmpty());
    world.privacy.answerMicrophone(true);
    UiWorld::settle();
    EXPECT_TRUE(probe().shows(QStringLiteral("Microphone access granted")));
    EXPECT_FALSE(probe().has(QStringLiteral("onboarding.allowMicrophone")));
    EXPECT_EQ(state(1), QStringLiteral("Done"));
    EXPECT_TRUE(probe().shows(QStringLiteral("1/4 completed")));
}

TEST_F(OnboardingTest, ARefusedMicrophoneLeadsToItsSettings)
{
    const QString denied =
        translate("Access was denied. Switch Tulvane on under Privacy & Security › Microphone.");
    EXPECT_FALSE(probe().shows(denied));
    for (const auto access : {MicrophoneAccess::denied, MicrophoneAccess::restricted}) {
        setMicrophone(access);
        EXPECT_TRUE(probe().shows(denied));
        EXPECT_FALSE(probe().has(QStringLiteral("onboarding.allowMicrophone")));
        EXPECT_EQ(state(1), QStringLiteral("To do"));
    }
    probe().click(QStringLiteral("onboarding.openMicrophone"));
    EXPECT_EQ(world.workspace.opened, QList<QUrl>{QUrl(PermissionsService::microphonePane)});
    EXPECT_FALSE(world.privacy.calls.contains(QStringLiteral("requestMicrophone")));
}

TEST_F(OnboardingTest, WhatStandsInTheMicrophonesWayIsSaid)
{
    world.privacy.obstacles[Permission::microphone] = {QStringLiteral("The server refuses."),
                                                       QStringLiteral("Allow it there.")};
    setMicrophone(MicrophoneAccess::denied);
    EXPECT_TRUE(probe().shows(QStringLiteral("The server refuses. Allow it there.")));
}

TEST_F(OnboardingTest, AccessibilityIsGivenInTheSettingsOrResetAndGivenAnew)
{
    const QString hint = translate("Turn on the switch next to Tulvane. If the switch is already on but this "
                                   "step stays “To do”, the entry belongs to an older build of the app – use "
                                   "“Reset & grant again” and approve the prompt.");
    open(2);
    EXPECT_TRUE(probe().shows(hint));
    probe().click(QStringLiteral("onboarding.openAccessibility"));
    EXPECT_EQ(world.workspace.opened, QList<QUrl>{QUrl(PermissionsService::accessibilityPane)});
    world.privacy.grantOnRequest = true;
    probe().click(QStringLiteral("onboarding.resetAccessibility"));
    EXPECT_THAT(world.processes.commands, testing::ElementsAre(FakeProcesses::Command{
                                              QStringLiteral("/usr/bin/tccutil"),
                                              {QStringLiteral("reset"), QStringLiteral("Accessibility"),
                                               QStringLiteral("com.dunio.Tulvane")}}));
    EXPECT_EQ(world.privacy.calls.count(QStringLiteral("requestAccessibility")), 1);
    EXPECT_TRUE(probe().shows(QStringLiteral("Accessibility access granted")));
    EXPECT_FALSE(probe().shows(hint));
    EXPECT_FALSE(probe().has(QStringLiteral("onboarding.openAccessibility")));
    EXPECT_EQ(state(2), QStringLiteral("Done"));
}

TEST_F(OnboardingTest, WhatStandsInAccessibilitysWayIsSaid)
{
    world.privacy.obstacles[Permission::accessibility] = {QStringLiteral("Not in this session."),
                                                          QStringLiteral("Paste yourself.")};
    open(2);
    EXPECT_TRUE(probe().shows(QStringLiteral("Not in this session. Paste yourself.")));
    EXPECT_TRUE(probe().has(QStringLiteral("onboarding.resetAccessibility")));
    setAccessibility(true);
    EXPECT_FALSE(probe().shows(QStringLiteral("Not in this session. Paste yourself.")));
}

TEST_F(OnboardingTest, TheModelIsDownloadedInPlace)
{
    open(3);
    probe().click(QStringLiteral("onboarding.model.start"));
    ASSERT_EQ(world.transfers.started.size(), 1);
    world.transfers.tellProgress(world.transfers.lastTask(), 100, 1000);
    UiWorld::settle();
    EXPECT_TRUE(probe().has(QStringLiteral("onboarding.model.cancel")));
    EXPECT_EQ(state(3), QStringLiteral("To do"));
    probe().click(QStringLiteral("onboarding.model.cancel"));
    EXPECT_EQ(world.transfers.cancelled.size(), 1);
}

TEST_F(OnboardingTest, AWholeDictationCanBeHeardBeforeAModelIsThere)
{
    open(3);
    world.engine.text = QStringLiteral(" god morgen");
    EXPECT_TRUE(
        probe().shows(translate("A synthetic voice says a sentence, and the bundled demo model writes "
                                "it. Nothing is downloaded.")));
    probe().click(QStringLiteral("onboarding.hear"));
    EXPECT_TRUE(probe().shows(QStringLiteral("The voice is speaking…")));
    EXPECT_FALSE(probe().item(QStringLiteral("onboarding.hear")).isEnabled());
    world.scheduler.advance(std::chrono::seconds(2));
    UiWorld::settle();
    EXPECT_TRUE(probe().shows(QStringLiteral("God morgen")));
    EXPECT_TRUE(probe().item(QStringLiteral("onboarding.hear")).isEnabled());
    EXPECT_EQ(world.sounds.speech, world.demoSpeech);
    world.installModel(world.settings.selectedModelID());
    UiWorld::settle();
    EXPECT_FALSE(probe().has(QStringLiteral("onboarding.hear"))) << "the user's own voice comes now";
}

TEST_F(OnboardingTest, WhyNothingCanBeHeardIsSaid)
{
    open(3);
    world.demoSpeech = nullptr;
    probe().click(QStringLiteral("onboarding.hear"));
    EXPECT_TRUE(probe().shows(QStringLiteral("The recorded voice is missing.")));
}

TEST_F(OnboardingTest, AnInstalledModelIsSaid)
{
    open(3);
    EXPECT_TRUE(probe().has(QStringLiteral("onboarding.model.start")));
    world.installModel(world.settings.selectedModelID());
    UiWorld::settle();
    EXPECT_EQ(state(3), QStringLiteral("Done"));
    EXPECT_TRUE(probe().shows(QStringLiteral("Speech model installed")));
}

TEST_F(OnboardingTest, AnUnknownModelStandsForTheOneOfANewUser)
{
    world.settings.selectedModelID.set(QStringLiteral("gone"));
    world.installModel(QStringLiteral("nb-whisper-medium-q5_0"));
    EXPECT_EQ(state(3), QStringLiteral("Done"));
}

TEST_F(OnboardingTest, EachStepHasAnAction)
{
    guide().act(1);
    EXPECT_EQ(world.privacy.calls.count(QStringLiteral("requestMicrophone")), 1);
    guide().act(2);
    EXPECT_EQ(world.workspace.opened.size(), 1);
    guide().act(3);
    EXPECT_EQ(world.models.state(world.settings.selectedModelID()).kind(), ModelState::Kind::downloading);
    guide().act(4);
    EXPECT_EQ(world.ui.settingsWindow().selection().tab(), SettingsTab::settings);
    guide().act(5);
    world.privacy.answerMicrophone(false);
    UiWorld::settle();
}

TEST_F(OnboardingTest, TheFooterCountsWhatIsLeft)
{
    const QString rest =
        translate(" You can close this and come back any time from the menu-bar icon › Setup guide.");
    EXPECT_TRUE(probe().shows(QStringLiteral("4 steps left.") + rest));
    EXPECT_TRUE(probe().shows(QStringLiteral("Close")));
    setMicrophone(MicrophoneAccess::authorized);
    setAccessibility(true);
    world.installModel(world.settings.selectedModelID());
    UiWorld::settle();
    EXPECT_TRUE(probe().shows(QStringLiteral("1 step left.") + rest));
    EXPECT_TRUE(probe().shows(QStringLiteral("3/4 completed")));
}

TEST_F(OnboardingTest, TheFooterPromisesNoIconWhereThereIsNoTray)
{
    world.statusItem.setBar(false);
    setMicrophone(MicrophoneAccess::authorized);
    UiWorld::settle();
    EXPECT_TRUE(probe().shows(QStringLiteral(
        "3 steps left. You can close this and come back any time from Settings › Setup guide.")));
}

TEST_F(OnboardingTest, TheFooterNamesTheHotkeyOnceAllIsSet)
{
    setMicrophone(MicrophoneAccess::authorized);
    setAccessibility(true);
    world.installModel(world.settings.selectedModelID());
    setCombination();
    EXPECT_TRUE(probe().shows(QStringLiteral("All set. Focus any text field and press <b>⌥Space</b>.")));
    EXPECT_EQ(guide().spokenFooter(), QStringLiteral("All set. Focus any text field and press ⌥Space."));
    EXPECT_TRUE(probe().shows(QStringLiteral("Done")));
    EXPECT_EQ(guide().finishLabel(), QStringLiteral("Done"));
    EXPECT_FALSE(probe().shows(QStringLiteral("Close")));

    // Another hotkey, and every mark as it was; a name that would be markup, or end the bold part.
    world.shortcuts.setShortcut(Shortcut{10, carbon::control}, ShortcutName::dictate());
    UiWorld::settle();
    EXPECT_EQ(guide().footer(), QStringLiteral("All set. Focus any text field and press <b>⌃&lt;</b>."));
    EXPECT_TRUE(probe().shows(guide().footer()));
    world.shortcuts.setShortcut(Shortcut{67, carbon::control}, ShortcutName::dictate());
    EXPECT_EQ(guide().spokenFooter(), QStringLiteral("All set. Focus any text field and press ⌃*."));
}

TEST_F(OnboardingTest, TheFirstStepThatIsLeftStandsOut)
{
    EXPECT_EQ(guide().next(), 1);
    setAccessibility(true);
    EXPECT_EQ(guide().next(), 1);
    setMicrophone(MicrophoneAccess::authorized);
    EXPECT_EQ(guide().next(), 3);
    setCombination();
    world.installModel(world.settings.selectedModelID());
    EXPECT_EQ(guide().next(), 0);
}

TEST_F(OnboardingTest, WithoutAHotkeyTheLastStepIsLeft)
{
    EXPECT_EQ(state(4), QStringLiteral("To do"));
    world.settings.modifierHotkey.set(ModifierHotkey::rightOption);
    UiWorld::settle();
    EXPECT_EQ(state(4), QStringLiteral("Done"));
}

TEST_F(OnboardingTest, AHotkeyThatTheDesktopKeepsIsSaidAndItsStepIsOpen)
{
    setAccessibility(true);
    setMicrophone(MicrophoneAccess::authorized);
    world.installModel(world.settings.selectedModelID());
    world.globalHotkeys.failRegistrations(HotkeyError::taken(1));
    setCombination();
    EXPECT_EQ(state(4), QStringLiteral("Done")) << "one is chosen";
    EXPECT_EQ(guide().next(), 4);
    EXPECT_EQ(guide().hotkey(), QStringLiteral("⌥Space does not work as the hotkey"));
    const auto said = QStringLiteral("⌥Space does not work as the hotkey. The step “Hotkey” says why.");
    EXPECT_TRUE(probe().shows(said));
    EXPECT_EQ(guide().spokenFooter(), said);
    EXPECT_TRUE(probe().shows(HotkeyError::taken(1).description()));
    EXPECT_TRUE(guide().isAllDone()) << "the guide can be finished";
    world.globalHotkeys.failRegistrations(std::nullopt);
    world.shortcuts.registerAgain();
    UiWorld::settle();
    EXPECT_EQ(guide().next(), 0);
    EXPECT_EQ(guide().spokenFooter(), QStringLiteral("All set. Focus any text field and press ⌥Space."));
}

TEST_F(OnboardingTest, FinishingNeedsMicrophoneModelAndHotkeyButNotAccessibility)
{
    setMicrophone(MicrophoneAccess::authorized);
    world.installModel(world.settings.selectedModelID());
    setCombination();
    probe().click(QStringLiteral("onboarding.finish"));
    EXPECT_TRUE(world.settings.hasCompletedOnboarding());
    EXPECT_FALSE(window().isVisible());
}

TEST_F(OnboardingTest, FinishingWithAnythingMissingOnlyCloses)
{
    const auto finish = [this] {
        world.ui.showOnboarding();
        probe().click(QStringLiteral("onboarding.finish"));
        EXPECT_FALSE(window().isVisible());
        return world.settings.hasCompletedOnboarding();
    };
    setAccessibility(true);
    EXPECT_FALSE(finish());
    setMicrophone(MicrophoneAccess::authorized);
    setCombination();
    EXPECT_FALSE(finish()) << "no model";
    world.installModel(world.settings.selectedModelID());
    world.shortcuts.setShortcut(std::nullopt, ShortcutName::dictate());
    EXPECT_FALSE(finish()) << "no hotkey";
    setCombination();
    setMicrophone(MicrophoneAccess::denied);
    EXPECT_FALSE(finish()) << "no microphone";
    setMicrophone(MicrophoneAccess::authorized);
    EXPECT_TRUE(finish());
}

TEST_F(OnboardingTest, ClosingTheWindowFinishesNothing)
{
    setMicrophone(MicrophoneAccess::authorized);
    world.installModel(world.settings.selectedModelID());
    setCombination();
    world.ui.showOnboarding();
    window().close();
    EXPECT_FALSE(world.settings.hasCompletedOnboarding());
}

TEST_F(OnboardingTest, ThePermissionsAreReadWhileItIsShown)
{
    probe();
    EXPECT_TRUE(world.permissions.isPolling());
    world.privacy.microphoneAccess = MicrophoneAccess::authorized;
    world.privacy.accessibilityGranted = true;
    world.scheduler.advance(std::chrono::seconds(1));
    UiWorld::settle();
    EXPECT_EQ(state(1), QStringLiteral("Done"));
    EXPECT_EQ(state(2), QStringLiteral("Done"));
    window().close();
    EXPECT_FALSE(world.permissions.isPolling()) << "closed by the user";
    world.ui.showOnboarding();
    EXPECT_TRUE(world.permissions.isPolling());
    probe().click(QStringLiteral("onboarding.finish"));
    EXPECT_FALSE(world.permissions.isPolling()) << "closed by the button";
    EXPECT_TRUE(world.scheduler.pending().empty());
}

TEST_F(OnboardingTest, TheProgramMayEndWhileItIsShown)
{
    probe();
    world.ui.detach();
    EXPECT_FALSE(world.permissions.isPolling());
    world.ui.attach(world.context());
}

TEST_F(OnboardingTest, TabWalksThroughEveryControl)
{
    setCombination();
    QStringList order;
    for (int number = 1; number <= 4; ++number) {
        open(number);
        order += probe().tabOrder();
    }
    for (const char* name :
         {"Microphone", "Accessibility", "Speech model", "Hotkey", "Allow microphone access",
          "Open Accessibility settings…", "Already switched on? Reset & grant again", "Download",
          "Toggle (press to start, press to stop)", "Hold a single key", "Key combination",
          "Clear the key combination", "Close"})
        EXPECT_THAT(order, Contains(QString::fromUtf8(name)));
    EXPECT_FALSE(order.contains(QString())) << qPrintable(order.join(u'|'));
    // The modes are one stop: the chosen one, from which arrows lead to the others.
    EXPECT_FALSE(order.contains(QStringLiteral("Hold to talk")));
}

/// Everything that is wrong with the layout, from the top to the end of what scrolls.
QStringList flaws(WindowProbe& probe)
{
    QStringList found = probe.layoutFlaws();
    for (qreal y = 250; probe.scrollTo(y); y += 250)
        found += probe.layoutFlaws();
    return found;
}

class OnboardingLayoutTest : public OnboardingTest, public testing::WithParamInterface<AppLanguage> {
protected:
    OnboardingLayoutTest() : OnboardingTest(GetParam()) {}

    /// With each step open in turn.
    QStringList flawsOfEveryStep()
    {
        QStringList found = flaws(probe());
        for (int number = 1; number <= 4; ++number) {
            open(number);
            found += flaws(probe());
        }
        return found;
    }
};

TEST_P(OnboardingLayoutTest, WhatTheGuideOpensFitsOneScreen)
{
    probe();
    window().resize(620, 680);
    const auto fits = [this] {
        UiWorld::settle();
        return !probe().scrollTo(2000);
    };
    EXPECT_TRUE(fits()) << "the microphone is asked for";
    setMicrophone(MicrophoneAccess::denied);
    EXPECT_TRUE(fits()) << "the microphone is refused";
    setMicrophone(MicrophoneAccess::authorized);
    EXPECT_TRUE(fits()) << "accessibility";
    setAccessibility(true);
    setCombination();
    EXPECT_TRUE(fits()) << "the model";
    world.models.download(WhisperModel::fallback());
    EXPECT_TRUE(fits()) << "on its way";
    world.installModel(world.settings.selectedModelID());
    EXPECT_TRUE(fits()) << "the first dictation";
}

TEST_P(OnboardingLayoutTest, NothingIsCutOffWhileNothingIsDone)
{
    probe();
    window().resize(620, OnboardingWindowController::lowest);
    EXPECT_THAT(flawsOfEveryStep(), IsEmpty());
}

TEST_P(OnboardingLayoutTest, NothingIsCutOffWhereEverythingIsWrong)
{
    world.privacy.inputMonitoringGranted = false;
    world.privacy.obstacles[Permission::accessibility] = {
        translate("The X server lacks the XTEST extension, so no keys can be pressed for you."),
        translate("Start the X server with XTEST. Until then the text is left on the clipboard.")};
    world.settings.modifierHotkey.set(ModifierHotkey::rightOption);
    world.globalHotkeys.takeElsewhere({49, carbon::option});
    setCombination();
    setMicrophone(MicrophoneAccess::denied);
    world.models.download(WhisperModel::fallback());
    EXPECT_THAT(flawsOfEveryStep(), IsEmpty());
}

TEST_P(OnboardingLayoutTest, NothingIsCutOffWhenAllIsDone)
{
    setMicrophone(MicrophoneAccess::authorized);
    setAccessibility(true);
    world.settings.modifierHotkey.set(ModifierHotkey::rightOption);
    world.shortcuts.setShortcut(Shortcut{49, carbon::all}, ShortcutName::dictate());
    world.installModel(world.settings.selectedModelID());
    EXPECT_THAT(flawsOfEveryStep(), IsEmpty());
}

INSTANTIATE_TEST_SUITE_P(Languages, OnboardingLayoutTest,
                         testing::Values(AppLanguage::english, AppLanguage::norwegian));

} // namespace

} // namespace tulvane::test
