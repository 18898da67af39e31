#include "SessionFixture.h"

namespace tulvane::test {

class SessionFinish : public SessionFixture {};

TEST_F(SessionFinish, ARejectedRecordingIsItsOutcomeAtOnce)
{
    EXPECT_EQ(*finish(Outcome::tooShort()), Outcome::tooShort());
    EXPECT_EQ(*finish(Outcome::nothingHeard()), Outcome::nothingHeard());
    EXPECT_EQ(session->state(), State::idle);
}

TEST_F(SessionFinish, ATranscriptIsCleanedKeptAndCounted)
{
    const auto outcome = dictate(24000);
    ASSERT_TRUE(outcome);
    EXPECT_EQ(*outcome, Outcome::transcript(QStringLiteral("Hei på deg "), 1.5));
    EXPECT_EQ(session->lastTranscript(), QStringLiteral("Hei på deg "));
    ASSERT_EQ(session->history().size(), 1);
    const TranscriptEntry& entry = session->history().constFirst();
    EXPECT_FALSE(entry.id.isNull());
    EXPECT_EQ(entry.date, clock.now());
    EXPECT_EQ(entry.text, QStringLiteral("Hei på deg "));
    EXPECT_DOUBLE_EQ(entry.durationSeconds, 1.5);
    ASSERT_EQ(stats.days().size(), 1);
    EXPECT_EQ(stats.days().constFirst().dictations, 1);
    EXPECT_EQ(stats.days().constFirst().words, 3);
    EXPECT_DOUBLE_EQ(stats.days().constFirst().speechSeconds, 1.5);
    EXPECT_EQ(session->state(), State::idle);
}

TEST_F(SessionFinish, TheTextIsKeptBeforeItIsCountedAndCountedBeforeTheStateIsIdle)
{
    QStringList order;
    QObject::connect(session.get(), &DictationSession::lastTranscriptChanged, session.get(),
                     [&] { order.append(QStringLiteral("last")); });
    QObject::connect(session.get(), &DictationSession::historyChanged, session.get(),
                     [&] { order.append(QStringLiteral("history")); });
    QObject::connect(&stats, &StatsStore::daysChanged, session.get(),
                     [&] { order.append(QStringLiteral("stats")); });
    record(16000);
    const StopResult stopped = session->stop();
    QObject::connect(session.get(), &DictationSession::stateChanged, session.get(),
                     [&] { order.append(QStringLiteral("idle")); });
    static_cast<void>(finish(stopped));
    EXPECT_EQ(order, (QStringList{QStringLiteral("last"), QStringLiteral("history"), QStringLiteral("stats"),
                                  QStringLiteral("idle")}));
}

TEST_F(SessionFinish, TheSettingsDecideLanguagePromptAndCleanup)
{
    settings.language.set(TranscriptionLanguage::norwegianNynorsk);
    settings.vocabularyPrompt.set(QStringLiteral(" Solveig, Førde "));
    settings.autoCapitalize.set(false);
    settings.appendTrailingSpace.set(false);
    EXPECT_EQ(dictate()->text, QStringLiteral("hei på deg"));
    const auto& asked = engine.transcriptions.back();
    EXPECT_EQ(asked.options.language, QStringLiteral("nn"));
    EXPECT_EQ(asked.options.initialPrompt, QStringLiteral(" Solveig, Førde "));
    EXPECT_EQ(asked.options.threadCount, 3);
    EXPECT_FALSE(asked.options.translate);
    EXPECT_EQ(asked.samples->size(), 16000U) << "the engine pads, not the session";

    settings.language.set(TranscriptionLanguage::automatic);
    static_cast<void>(dictate());
    EXPECT_EQ(engine.transcriptions.back().options.language, QStringLiteral("auto"));
}

TEST_F(SessionFinish, SettingsChangedWhileTheRecogniserWorksCountFromTheNextDictation)
{
    static_cast<void>(dictate());
    engine.isPrompt = false;
    record(16000);
    begin(session->stop());
    settings.autoCapitalize.set(false);
    ASSERT_TRUE(waitUntil([&] {
        if (engine.waiting() > 0)
            engine.step();
        return finished.has_value();
    }));
    EXPECT_EQ((*finished)->text, QStringLiteral("Hei på deg "));
}

TEST_F(SessionFinish, AnEmptyTextIsNothingRecognisedAndLeavesNoTrace)
{
    static_cast<void>(dictate());
    engine.text = QStringLiteral(" [Musikk] ");
    EXPECT_EQ(*dictate(), Outcome::nothingRecognised());
    EXPECT_EQ(session->lastTranscript(), QStringLiteral("Hei på deg "));
    EXPECT_EQ(session->history().size(), 1);
    EXPECT_EQ(stats.days().constFirst().dictations, 1);
    EXPECT_EQ(session->state(), State::idle);
}

TEST_F(SessionFinish, TheHistoryKeepsTheNewestTwentyFive)
{
    for (int i = 1; i <= 26; ++i) {
        engine.text = QStringLiteral("tekst %1").arg(i);
        static_cast<void>(dictate());
    }
    ASSERT_EQ(session->history().size(), 25);
    EXPECT_EQ(session->history().constFirst().text, QStringLiteral("Tekst 26 "));
    EXPECT_EQ(session->history().constLast().text, QStringLiteral("Tekst 2 "));
    EXPECT_NE(session->history().at(0).id, session->history().at(1).id);
}

TEST_F(SessionFinish, AModelThatVanishedMeanwhileIsAnError)
{
    record(16000);
    const StopResult stopped = session->stop();
    models.file.reset();
    const auto outcome = finish(stopped);
    ASSERT_FALSE(outcome);
    EXPECT_TRUE(outcome.error().is(SessionError::modelNotDownloaded));
    EXPECT_EQ(session->state(), State::idle);
    EXPECT_TRUE(stats.days().isEmpty());
}

TEST_F(SessionFinish, AFailedLoadReachesTheCallerAndNothingIsCounted)
{
    settle();
    engine.model.reset();
    engine.loadError = EngineError::modelLoadFailed(QStringLiteral("/models/medium.bin"));
    const auto outcome = dictate();
    ASSERT_FALSE(outcome);
    EXPECT_EQ(outcome.error().description(), engine.loadError->description());
    EXPECT_EQ(session->state(), State::idle);
    EXPECT_FALSE(session->isModelLoading());
    EXPECT_TRUE(stats.days().isEmpty());
    EXPECT_TRUE(session->history().isEmpty());
}

TEST_F(SessionFinish, AFailedTranscriptionReachesTheCallerAndNothingIsCounted)
{
    static_cast<void>(dictate());
    engine.transcribeError = EngineError::transcriptionFailed(-6);
    const auto outcome = dictate();
    ASSERT_FALSE(outcome);
    EXPECT_EQ(outcome.error().description(), QStringLiteral("Transcription failed (whisper error -6)."));
    EXPECT_EQ(session->state(), State::idle);
    EXPECT_EQ(session->history().size(), 1);
    EXPECT_EQ(stats.days().constFirst().dictations, 1);
}

TEST_F(SessionFinish, FailedAudioCanBeTriedAgainAndIsNotLost)
{
    static_cast<void>(dictate());
    int changes = 0;
    QObject::connect(session.get(), &DictationSession::canRetryChanged, session.get(), [&] { ++changes; });
    engine.transcribeError = EngineError::transcriptionFailed(-6);
    ASSERT_FALSE(dictate(32000));
    EXPECT_TRUE(session->canRetry());
    ASSERT_FALSE(QCoro::waitFor(session->retry()));
    EXPECT_TRUE(session->canRetry()) << "a second failure keeps the audio too";

    engine.transcribeError.reset();
    const auto outcome = QCoro::waitFor(session->retry());
    ASSERT_TRUE(outcome);
    EXPECT_EQ(*outcome, Outcome::transcript(QStringLiteral("Hei på deg "), 2.0));
    EXPECT_EQ(engine.transcriptions.back().samples->size(), 32000U);
    EXPECT_EQ(session->history().size(), 2);
    EXPECT_FALSE(session->canRetry());
    EXPECT_GE(changes, 2);
}

TEST_F(SessionFinish, AFailedLoadKeepsTheAudioToo)
{
    settle();
    engine.model.reset();
    engine.loadError = EngineError::modelLoadFailed(QStringLiteral("/models/medium.bin"));
    ASSERT_FALSE(dictate());
    EXPECT_TRUE(session->canRetry());
    engine.loadError.reset();
    EXPECT_TRUE(QCoro::waitFor(session->retry()));
}

TEST_F(SessionFinish, TheNextUsableAudioEndsTheOffer)
{
    static_cast<void>(dictate());
    engine.transcribeError = EngineError::transcriptionFailed(-6);
    ASSERT_FALSE(dictate());
    isMicrophoneAuthorized = false;
    EXPECT_FALSE(session->start());
    EXPECT_TRUE(session->canRetry()) << "a recording that did not start takes nothing away";
    isMicrophoneAuthorized = true;
    record(16000);
    EXPECT_FALSE(session->canRetry()) << "not while recording";
    static_cast<void>(session->stop());
    EXPECT_FALSE(session->canRetry());
    const auto outcome = QCoro::waitFor(session->retry());
    ASSERT_FALSE(outcome);
    EXPECT_TRUE(outcome.error().is(SessionError::notRecording));
}

TEST_F(SessionFinish, ARecordingThatYieldsNothingLeavesTheOffer)
{
    engine.transcribeError = EngineError::transcriptionFailed(-6);
    ASSERT_FALSE(dictate(32000));
    engine.transcribeError.reset();
    record(16000);
    session->cancel();
    EXPECT_TRUE(session->canRetry()) << "a cancelled tap";
    EXPECT_EQ(*dictate(100), Outcome::tooShort());
    EXPECT_TRUE(session->canRetry()) << "too short";
    EXPECT_EQ(*dictate(16000, 0.0F), Outcome::nothingHeard());
    EXPECT_TRUE(session->canRetry()) << "silence";
    record(16000);
    input.changeConfiguration();
    ASSERT_TRUE(waitUntil([&] { return session->state() == State::idle; }));
    EXPECT_TRUE(session->canRetry()) << "a lost microphone";
    const auto outcome = QCoro::waitFor(session->retry());
    ASSERT_TRUE(outcome);
    EXPECT_DOUBLE_EQ(outcome->durationSeconds, 2.0);
}

TEST_F(SessionFinish, LanguageAndPromptAreThoseOfTheStop)
{
    static_cast<void>(dictate());
    engine.isPrompt = false;
    settings.language.set(TranscriptionLanguage::english);
    settings.vocabularyPrompt.set(QStringLiteral("Solveig"));
    record(16000);
    settings.language.set(TranscriptionLanguage::norwegianNynorsk);
    settings.vocabularyPrompt.set(QStringLiteral("Torbjørn"));
    begin(session->stop());
    settings.language.set(TranscriptionLanguage::automatic);
    settings.vocabularyPrompt.set(QStringLiteral("Åse"));
    ASSERT_TRUE(waitUntil([&] {
        if (engine.waiting() > 0)
            engine.step();
        return finished.has_value();
    }));
    EXPECT_EQ(engine.transcriptions.back().options.language, QStringLiteral("nn"));
    EXPECT_EQ(engine.transcriptions.back().options.initialPrompt, QStringLiteral("Torbjørn"));
}

TEST_F(SessionFinish, ASessionThatIsGoneWhenTheRecogniserAnswersDoesNothing)
{
    static_cast<void>(dictate());
    engine.isPrompt = false;
    record(16000);
    begin(session->stop());
    settle();
    ASSERT_GT(engine.waiting(), 0U);
    session.reset();
    while (engine.waiting() > 0) {
        engine.step();
        settle();
    }
    EXPECT_EQ(stats.days().constFirst().dictations, 1);
}

} // namespace tulvane::test
