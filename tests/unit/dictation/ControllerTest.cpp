#include "ControllerFixture.h"

#include <gmock/gmock.h>

namespace tulvane {
namespace {

using namespace std::chrono_literals;
using testing::ElementsAre;
using testing::IsEmpty;

class Controller : public test::ControllerFixture {};

TEST_F(Controller, BeginsIdleWithTheIndicatorFadedOut)
{
    EXPECT_EQ(phase(), u"idle");
    EXPECT_EQ(indicator.visibility, u"fade");
}

TEST_F(Controller, AWholeDictationGoesThroughItsPhasesWithItsSounds)
{
    dictateByHotkey();
    EXPECT_EQ(phase(), u"inserting");
    advance(3s);
    EXPECT_THAT(phases, ElementsAre(QStringLiteral("recording"), QStringLiteral("transcribing"),
                                    QStringLiteral("inserting"), QStringLiteral("idle")));
    EXPECT_THAT(sounds.played,
                ElementsAre(QStringLiteral("Pop"), QStringLiteral("Tink"), QStringLiteral("Morse")));
    EXPECT_EQ(keys.pastes(), 1);
}

TEST_F(Controller, WithoutSoundsNoneIsEverPlayed)
{
    settings.playSounds.set(false);
    dictateByHotkey();
    advance(3s);
    models.become(std::nullopt);
    press();
    EXPECT_EQ(phase().left(6), u"error:");
    EXPECT_THAT(sounds.played, IsEmpty());
}

TEST_F(Controller, AVerdictIsANoticeForItsTime)
{
    press();
    speak(100);
    press();
    EXPECT_EQ(phase(), u"notice: Too short");
    advance(1599ms);
    EXPECT_EQ(phase(), u"notice: Too short");
    advance(1ms);
    EXPECT_EQ(phase(), u"idle");

    press();
    speak(16000, 0);
    press();
    EXPECT_EQ(phase(), u"notice: Nothing heard");

    engine.text = QStringLiteral(" [Musikk]");
    press();
    speak();
    press();
    EXPECT_EQ(phase(), u"notice: Nothing recognised");
    EXPECT_EQ(sounds.played.count(QStringLiteral("Morse")), 0);
}

TEST_F(Controller, ATextThatOnlyReachedTheClipboardSaysSo)
{
    settings.insertionMethod.set(InsertionMethod::clipboardOnly);
    dictateByHotkey();
    EXPECT_EQ(phase(), u"notice: Copied to clipboard");
    EXPECT_EQ(sounds.played.last(), u"Morse");
    advance(1600ms);
    EXPECT_EQ(phase(), u"idle");
}

TEST_F(Controller, APressDuringANoticeBeginsAnewAndTheNoticeDoesNotCutItShort)
{
    press();
    speak(100);
    press();
    advance(1000ms);
    press();
    EXPECT_EQ(phase(), u"recording");
    advance(5s);
    EXPECT_EQ(phase(), u"recording");
}

TEST_F(Controller, ALaterNoticeHasItsWholeTime)
{
    controller->showNotice(QStringLiteral("one"));
    advance(1500ms);
    controller->showNotice(QStringLiteral("two"));
    advance(1500ms);
    EXPECT_EQ(phase(), u"notice: two");
    advance(100ms);
    EXPECT_EQ(phase(), u"idle");
}

TEST_F(Controller, AnErrorIsLoggedHeardAndShownForThreeSeconds)
{
    log.clear();
    controller->showError(QStringLiteral("It broke."));
    EXPECT_TRUE(log.contains(QStringLiteral("It broke.")));
    EXPECT_THAT(sounds.played, ElementsAre(QStringLiteral("Basso")));
    advance(2999ms);
    EXPECT_EQ(phase(), u"error: It broke.");
    advance(1ms);
    EXPECT_EQ(phase(), u"idle");
}

TEST_F(Controller, AMissingModelIsAnErrorAndOpensTheOnboarding)
{
    models.become(std::nullopt);
    press();
    EXPECT_EQ(phase(), u"error: The speech model has not been downloaded yet.");
    EXPECT_EQ(windows.onboardings, 1);
    EXPECT_THAT(sounds.played, ElementsAre(QStringLiteral("Basso")));
    EXPECT_FALSE(hotkeys.machine.isRecording);
    // The next press is a start again, not a stop.
    models.become(QStringLiteral("/models/medium.bin"));
    press();
    EXPECT_EQ(phase(), u"recording");
}

TEST_F(Controller, AMissingMicrophonePermissionOpensTheOnboardingAndABrokenMicrophoneDoesNot)
{
    isMicrophoneAuthorized = false;
    press();
    EXPECT_EQ(phase().left(6), u"error:");
    EXPECT_EQ(windows.onboardings, 1);
    isMicrophoneAuthorized = true;
    input.setStartFailure(QStringLiteral("busy"));
    press();
    EXPECT_EQ(phase().left(6), u"error:");
    EXPECT_EQ(windows.onboardings, 1);
}

TEST_F(Controller, AFailedTranscriptionIsAnErrorWithItsText)
{
    engine.transcribeError = EngineError::transcriptionFailed(7);
    dictateByHotkey();
    EXPECT_EQ(phase(), u"error: " + EngineError::transcriptionFailed(7).description());
    EXPECT_EQ(windows.onboardings, 0);
}

TEST_F(Controller, AFailuresReasonIsTheSecondLineOfItsMessage)
{
    engine.transcribeError =
        EngineError::transcriptionFailed(EngineError::notEnoughMemory, {.kind = EngineObstacle::Kind::memory,
                                                                        .detail = {},
                                                                        .neededBytes = 500'000'000,
                                                                        .availableBytes = 70'000'000});
    dictateByHotkey();
    EXPECT_EQ(phase(), u"error: Transcription failed (whisper error -102).\n"
                       u"This needs 500 MB of memory, and 70 MB are available.");
    EXPECT_EQ(controller->phase().firstLine(), u"Transcription failed (whisper error -102).");
    EXPECT_TRUE(log.texts("app", QtCriticalMsg).join(u'\n').contains(u"500 MB"));
}

TEST_F(Controller, APressWhileADictationIsFinishedIsIgnoredAndTheNextOneStarts)
{
    engine.isPrompt = false;
    dictateByHotkey();
    EXPECT_EQ(phase(), u"transcribing");
    press();
    EXPECT_EQ(phase(), u"transcribing");
    EXPECT_FALSE(hotkeys.machine.isRecording);
    while (engine.waiting() > 0) {
        engine.step();
        settle();
    }
    EXPECT_EQ(phase(), u"inserting");
    press();
    EXPECT_EQ(phase(), u"inserting");
    advance(3s);
    EXPECT_EQ(phase(), u"idle");
    press();
    EXPECT_EQ(phase(), u"recording");
}

TEST_F(Controller, AStopWithoutARecordingDoesNothing)
{
    controller->stop();
    EXPECT_THAT(sounds.played, IsEmpty());
    EXPECT_THAT(phases, IsEmpty());
    controller->cancel();
    EXPECT_THAT(phases, IsEmpty());
}

TEST_F(Controller, TheInsertionMethodIsThatOfTheMomentOfStopping)
{
    engine.isPrompt = false;
    dictateByHotkey();
    settings.insertionMethod.set(InsertionMethod::clipboardOnly);
    while (engine.waiting() > 0) {
        engine.step();
        settle();
    }
    advance(3s);
    EXPECT_EQ(phase(), u"idle");
    EXPECT_EQ(keys.pastes(), 1);
}

TEST_F(Controller, TheLongestRecordingEndsLikeAPressAndLeavesTheHotkeyFresh)
{
    press();
    speak();
    session->onMaxDurationReached();
    settle();
    EXPECT_EQ(phase(), u"inserting");
    EXPECT_EQ(sounds.played.at(1), u"Tink");
    EXPECT_FALSE(hotkeys.machine.isRecording);
    advance(3s);
    press();
    EXPECT_EQ(phase(), u"recording");
}

TEST_F(Controller, ALostMicrophoneIsANoticeAndLeavesTheHotkeyFresh)
{
    press();
    input.changeConfiguration();
    settle();
    EXPECT_EQ(phase(), u"notice: Microphone changed – recording cancelled");
    EXPECT_FALSE(hotkeys.machine.isRecording);
    press();
    EXPECT_EQ(phase(), u"recording");
}

TEST_F(Controller, CancellingIsSilentAndDiscardsTheRecording)
{
    press();
    speak();
    engine.transcriptions.clear(); // the warm-up
    controller->cancel();
    EXPECT_EQ(phase(), u"idle");
    EXPECT_THAT(sounds.played, ElementsAre(QStringLiteral("Pop")));
    EXPECT_FALSE(hotkeys.machine.isRecording);
    EXPECT_TRUE(engine.transcriptions.empty());

    press();
    controller->cancel(QStringLiteral("Given up"));
    EXPECT_EQ(phase(), u"notice: Given up");
}

TEST_F(Controller, ARecordingThatTheMenuBeganIsEndedByTheNextPress)
{
    for (const HotkeyMode mode : {HotkeyMode::toggle, HotkeyMode::hybrid}) {
        settings.hotkeyMode.set(mode);
        controller->start();
        EXPECT_EQ(phase(), u"recording");
        speak();
        press();
        EXPECT_EQ(phase(), u"inserting");
        advance(3s);
        EXPECT_EQ(phase(), u"idle");
    }
}

TEST_F(Controller, ARecordingThatTheMenuEndedIsFollowedByAFreshPress)
{
    press();
    speak();
    controller->toggle();
    advance(3s);
    EXPECT_EQ(phase(), u"idle");
    press();
    EXPECT_EQ(phase(), u"recording");
}

TEST_F(Controller, TogglingStartsAndStops)
{
    controller->toggle();
    EXPECT_EQ(phase(), u"recording");
    speak();
    controller->toggle();
    settle();
    EXPECT_EQ(phase(), u"inserting");
    controller->toggle();
    EXPECT_EQ(phase(), u"inserting");
}

TEST_F(Controller, AStartFromTheMenuThatFailsLeavesTheHotkeyFresh)
{
    models.become(std::nullopt);
    controller->start();
    EXPECT_FALSE(hotkeys.machine.isRecording);
}

TEST_F(Controller, TheIndicatorFollowsPhaseAndSetting)
{
    press();
    EXPECT_EQ(indicator.visibility, u"show");
    EXPECT_EQ(indicator.phase.kind, Phase::Kind::recording);
    settings.showHUD.set(false);
    EXPECT_EQ(indicator.visibility, u"hide");
    controller->cancel();
    EXPECT_EQ(indicator.visibility, u"hide");
    settings.showHUD.set(true);
    EXPECT_EQ(indicator.visibility, u"fade");
    controller->showNotice(QStringLiteral("Hello"));
    EXPECT_EQ(indicator.visibility, u"show");
    EXPECT_EQ(indicator.phase.text, u"Hello");
}

TEST_F(Controller, TheIndicatorHearsTheLevel)
{
    press();
    speak();
    settle();
    EXPECT_GT(indicator.level, 0.0F);
}

TEST_F(Controller, AGrantedInputMonitoringAppliesTheSingleKeyAgain)
{
    privacy.inputMonitoringGranted = false;
    permissions.refresh();
    makeController();
    settings.modifierHotkey.set(ModifierHotkey::rightOption);
    const int created = modifiers.created();
    permissions.refresh();
    EXPECT_EQ(modifiers.created(), created);
    privacy.inputMonitoringGranted = true;
    permissions.refresh();
    EXPECT_EQ(modifiers.created(), created + 1);
    permissions.refresh();
    EXPECT_EQ(modifiers.created(), created + 1);
}

TEST_F(Controller, ShowInDockIsFollowedWhereItChanges)
{
    settings.showInDock.set(settings.showInDock());
    EXPECT_EQ(policyChanges, 0);
    settings.showInDock.set(!settings.showInDock());
    EXPECT_EQ(policyChanges, 1);
}

TEST_F(Controller, LaunchingLogsRefreshesAndPreparesTheModel)
{
    settings.hasCompletedOnboarding.set(true);
    log.clear();
    controller->launch();
    settle();
    EXPECT_EQ(modelRefreshes, 1);
    EXPECT_TRUE(
        log.contains(QStringLiteral("Tulvane 1.2.3 launched; hotkey: ") + hotkeys.hotkeyDescription()));
    EXPECT_EQ(windows.onboardings, 0);
    EXPECT_THAT(engine.loads, ElementsAre(QStringLiteral("/models/medium.bin")));
}

TEST_F(Controller, LaunchingWithoutSomethingOpensTheOnboardingAndPreparesTheModelAllTheSame)
{
    settings.hasCompletedOnboarding.set(true);
    privacy.microphoneAccess = MicrophoneAccess::denied;
    controller->launch();
    EXPECT_EQ(windows.onboardings, 1);
    privacy.microphoneAccess = MicrophoneAccess::authorized;

    hasCombination = false;
    settings.modifierHotkey.set(ModifierHotkey::none);
    controller->launch();
    EXPECT_EQ(windows.onboardings, 2);
    settings.modifierHotkey.set(ModifierHotkey::rightOption);
    controller->launch();
    EXPECT_EQ(windows.onboardings, 2);

    models.become(std::nullopt);
    controller->launch();
    EXPECT_EQ(windows.onboardings, 3);
    models.become(QStringLiteral("/models/medium.bin"));

    settings.hasCompletedOnboarding.set(false);
    controller->launch();
    EXPECT_EQ(windows.onboardings, 4);
    settle();
    EXPECT_FALSE(engine.loads.isEmpty());
}

TEST_F(Controller, AnEndOfTheControllerDuringADictationIsNoHarm)
{
    engine.isPrompt = false;
    dictateByHotkey();
    controller.reset();
    while (engine.waiting() > 0) {
        engine.step();
        settle();
    }
    press();
    session->onMaxDurationReached = nullptr;
    EXPECT_EQ(keys.pastes(), 0);
}

} // namespace
} // namespace tulvane
