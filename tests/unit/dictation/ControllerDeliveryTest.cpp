#include "ControllerFixture.h"

#include <gmock/gmock.h>

namespace tulvane {
namespace {

using namespace std::chrono_literals;
using testing::ElementsAre;

// A failed transcription that is tried again, where the last text went, and whether there can be one.
class ControllerDelivery : public test::ControllerFixture {
protected:
    /// A dictation whose transcription fails; the next attempt succeeds.
    void failOnce()
    {
        engine.transcribeError = EngineError::transcriptionFailed(-6);
        dictateByHotkey();
        settle();
        ASSERT_EQ(phase().left(6), u"error:");
        ASSERT_TRUE(session->canRetry());
        engine.transcribeError.reset();
        phases.clear();
    }

    void finishEngine()
    {
        while (engine.waiting() > 0) {
            engine.step();
            settle();
        }
    }
};

TEST_F(ControllerDelivery, ARetryDeliversTheKeptAudioAsAStopDoes)
{
    failOnce();
    controller->retry();
    settle();
    EXPECT_EQ(phase(), u"inserting");
    advance(3s);
    EXPECT_THAT(phases, ElementsAre(QStringLiteral("transcribing"), QStringLiteral("inserting"),
                                    QStringLiteral("idle")));
    EXPECT_EQ(keys.pastes(), 1);
    EXPECT_EQ(sounds.played.last(), u"Morse");
    ASSERT_EQ(session->history().size(), 1);
    EXPECT_EQ(session->history().first().text, u"Hei på deg ");
    EXPECT_FALSE(session->canRetry());
}

TEST_F(ControllerDelivery, ARetryFromOurOwnWindowGoesToTheClipboard)
{
    failOnce();
    controller->retry(InsertionMethod::clipboardOnly);
    settle();
    EXPECT_EQ(phase(), u"notice: Copied to clipboard");
    EXPECT_EQ(boards.generalBoard.text(), u"Hei på deg ");
    EXPECT_EQ(keys.pastes(), 0);
    EXPECT_EQ(session->history().size(), 1);
}

TEST_F(ControllerDelivery, TheErrorsTimeDoesNotEndTheRetry)
{
    engine.isPrompt = false;
    dictateByHotkey();
    engine.transcribeError = EngineError::transcriptionFailed(-6);
    finishEngine();
    ASSERT_EQ(phase().left(6), u"error:");
    engine.transcribeError.reset();
    advance(2900ms);
    controller->retry();
    settle();
    EXPECT_EQ(phase(), u"transcribing");
    advance(1s);
    EXPECT_EQ(phase(), u"transcribing");
    finishEngine();
    advance(3s);
    EXPECT_EQ(session->history().size(), 1);
}

TEST_F(ControllerDelivery, ARetryThatFailsIsAnErrorAndCanBeTriedAgain)
{
    failOnce();
    engine.transcribeError = EngineError::transcriptionFailed(-6);
    controller->retry();
    settle();
    EXPECT_EQ(phase().left(6), u"error:");
    EXPECT_TRUE(session->canRetry());
    EXPECT_TRUE(session->history().isEmpty());
    advance(3s);
    EXPECT_EQ(phase(), u"idle");
}

TEST_F(ControllerDelivery, WithoutAFailureAndDuringADictationARetryDoesNothing)
{
    controller->retry();
    settle();
    EXPECT_TRUE(phases.isEmpty());
    failOnce();
    press();
    phases.clear();
    controller->retry();
    settle();
    EXPECT_EQ(phase(), u"recording");
    EXPECT_TRUE(phases.isEmpty());
}

TEST_F(ControllerDelivery, AnEndOfTheControllerDuringARetryIsNoHarm)
{
    engine.isPrompt = false;
    dictateByHotkey();
    engine.transcribeError = EngineError::transcriptionFailed(-6);
    finishEngine();
    engine.transcribeError.reset();
    controller->retry();
    settle();
    controller.reset();
    finishEngine();
    EXPECT_EQ(keys.pastes(), 0);
    EXPECT_EQ(session->history().size(), 1) << "the text is not lost";
}

TEST_F(ControllerDelivery, ATextOfTheHistoryIsBroughtIntoTheProgramInFrontAgain)
{
    controller->insertAgain(QStringLiteral("Hei igjen "));
    settle();
    EXPECT_EQ(phase(), u"inserting");
    advance(3s);
    EXPECT_EQ(phase(), u"idle");
    EXPECT_EQ(keys.pastes(), 1);
    EXPECT_EQ(controller->lastDelivery(), InsertionResult::pasted);
    press();
    controller->insertAgain(QStringLiteral("Hei igjen "));
    settle();
    EXPECT_EQ(phase(), u"recording") << "not into the middle of a dictation";
    EXPECT_EQ(keys.pastes(), 1);
}

TEST_F(ControllerDelivery, TellsWhereTheLastTextWent)
{
    QList<std::optional<InsertionResult>> told;
    QObject::connect(controller.get(), &DictationController::lastDeliveryChanged,
                     [&] { told.append(controller->lastDelivery()); });
    EXPECT_EQ(controller->lastDelivery(), std::nullopt);
    dictateByHotkey();
    EXPECT_EQ(controller->lastDelivery(), std::nullopt) << "it is still on its way";
    advance(3s);
    EXPECT_EQ(controller->lastDelivery(), InsertionResult::pasted);

    privacy.accessibilityGranted = false;
    press();
    EXPECT_EQ(controller->lastDelivery(), std::nullopt);
    speak();
    press();
    EXPECT_EQ(controller->lastDelivery(), InsertionResult::copiedToClipboard);
    advance(3s);
    EXPECT_EQ(controller->lastDelivery(), InsertionResult::copiedToClipboard) << "longer than its notice";
    EXPECT_THAT(told, ElementsAre(InsertionResult::pasted, std::nullopt, InsertionResult::copiedToClipboard));
}

TEST_F(ControllerDelivery, IsReadyWithMicrophoneAndModelAndTellsOnlyOfChanges)
{
    int changes = 0;
    QObject::connect(controller.get(), &DictationController::readinessChanged, [&] { ++changes; });
    EXPECT_TRUE(controller->isReady());
    permissions.refresh();
    EXPECT_EQ(changes, 0);
    privacy.microphoneAccess = MicrophoneAccess::denied;
    permissions.refresh();
    EXPECT_FALSE(controller->isReady());
    EXPECT_EQ(changes, 1);
    models.become(std::nullopt);
    EXPECT_EQ(changes, 1);
    privacy.microphoneAccess = MicrophoneAccess::authorized;
    permissions.refresh();
    EXPECT_FALSE(controller->isReady());
    models.become(QStringLiteral("/models/medium.bin"));
    EXPECT_TRUE(controller->isReady());
    EXPECT_EQ(changes, 2);
    // Another model is selected, which is not there.
    models.file = std::nullopt;
    settings.selectedModelID.set(QStringLiteral("nb-whisper-medium"));
    EXPECT_FALSE(controller->isReady());
    EXPECT_EQ(changes, 3);
}

} // namespace
} // namespace tulvane
