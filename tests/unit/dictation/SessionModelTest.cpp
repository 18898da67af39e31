#include "SessionFixture.h"

#include <dictation/ModelFigures.h>

namespace tulvane::test {

class SessionModel : public SessionFixture {
protected:
    /// Ends waiting jobs one by one until none is left.
    void drain()
    {
        settle();
        while (engine.waiting() > 0) {
            engine.step();
            settle();
        }
    }
};

TEST_F(SessionModel, AModelThatIsReadyAtTheStartIsLoadedInTheBackground)
{
    settle();
    EXPECT_EQ(engine.loads, QStringList{QStringLiteral("/models/medium.bin")});
}

TEST_F(SessionModel, AFreshlyLoadedModelIsWarmedUpOnceWithSilence)
{
    engine.isPrompt = false;
    engine.model.reset();
    engine.loads.clear();
    engine.transcriptions.clear();
    makeSession();
    settle();
    engine.step(); // which model is loaded: none
    settle();
    EXPECT_TRUE(session->isModelLoading());
    engine.step(); // loaded
    settle();
    EXPECT_TRUE(session->isModelLoading()) << "until the warm-up has ended";
    ASSERT_EQ(engine.transcriptions.size(), 1U);
    const auto& warmUp = engine.transcriptions.front();
    EXPECT_EQ(*warmUp.samples, std::vector<float>(24000, 0.0F));
    EXPECT_EQ(warmUp.options.language, QStringLiteral("no"));
    EXPECT_FALSE(warmUp.options.initialPrompt.has_value());
    EXPECT_EQ(warmUp.options.threadCount, 3);
    EXPECT_FALSE(warmUp.options.translate);
    engine.step();
    settle();
    EXPECT_FALSE(session->isModelLoading());
    EXPECT_EQ(engine.transcriptions.size(), 1U);
}

TEST_F(SessionModel, AFailingWarmUpChangesNothing)
{
    engine.model.reset();
    engine.transcribeError = EngineError::transcriptionFailed(-6);
    makeSession();
    settle();
    EXPECT_FALSE(session->isModelLoading());
    EXPECT_EQ(engine.model, models.file);
    EXPECT_TRUE(log.texts("app", QtCriticalMsg).isEmpty());
}

TEST_F(SessionModel, ALoadedModelIsNotLoadedAgain)
{
    settle();
    engine.loads.clear();
    static_cast<void>(dictate());
    static_cast<void>(dictate());
    EXPECT_TRUE(engine.loads.isEmpty());
}

TEST_F(SessionModel, AFailedPreloadIsOnlyLogged)
{
    engine.model.reset();
    engine.loadError = EngineError::modelLoadFailed(QStringLiteral("/models/medium.bin"));
    session->preloadModel();
    settle();
    EXPECT_EQ(log.texts("app", QtCriticalMsg),
              QStringList{QStringLiteral("Preload failed: Could not load the speech model at medium.bin.")});
    EXPECT_FALSE(session->isModelLoading());
    EXPECT_EQ(session->state(), State::idle);
}

TEST_F(SessionModel, NothingIsPreloadedThatIsNotThere)
{
    models.file.reset();
    engine.loads.clear();
    session->preloadModel();
    settle();
    EXPECT_TRUE(engine.loads.isEmpty());
    EXPECT_TRUE(log.texts("app", QtCriticalMsg).isEmpty());
}

TEST_F(SessionModel, ANewlySelectedModelIsLoadedInTheBackgroundOnce)
{
    settle();
    engine.loads.clear();
    models.file = QStringLiteral("/models/small.bin");
    settings.selectedModelID.set(QStringLiteral("nb-whisper-small-q5_0"));
    settings.selectedModelID.set(QStringLiteral("nb-whisper-small-q5_0"));
    settle();
    EXPECT_EQ(engine.loads, QStringList{QStringLiteral("/models/small.bin")});
}

TEST_F(SessionModel, AModelIsLoadedEachTimeItBecomesReady)
{
    models.become(std::nullopt);
    settle();
    engine.loads.clear();
    engine.model.reset();
    models.become(QStringLiteral("/models/medium.bin"));
    models.become(QStringLiteral("/models/medium.bin"));
    settle();
    EXPECT_EQ(engine.loads.size(), 1);
    models.become(std::nullopt);
    engine.model.reset();
    models.become(QStringLiteral("/models/medium.bin"));
    settle();
    EXPECT_EQ(engine.loads.size(), 2);
}

TEST_F(SessionModel, AModelThatStaysReadyIsNotLoadedForThat)
{
    settle();
    engine.loads.clear();
    engine.model.reset();
    models.become(QStringLiteral("/models/medium.bin"));
    settle();
    EXPECT_TRUE(engine.loads.isEmpty());
}

TEST_F(SessionModel, AModelThatIsLoadedASecondTimeIsWarmedUpAgain)
{
    settle();
    ASSERT_EQ(engine.transcriptions.size(), 1U);
    engine.model.reset();
    session->preloadModel();
    settle();
    EXPECT_EQ(engine.loads.size(), 2);
    EXPECT_EQ(engine.transcriptions.size(), 2U);
}

TEST_F(SessionModel, ItsMemoryAndItsSpeedAreNoted)
{
    qint64 resident = 100;
    ModelFigures noted({}, [&resident] { return resident; });
    figures = &noted;
    engine.isPrompt = false;
    engine.model.reset();
    makeSession();
    settle();
    engine.step(); // which model is loaded: none
    settle();
    resident = 700;
    drain();
    EXPECT_EQ(noted.of(*models.file)->bytes, 600);

    record(160000);
    drain();
    begin(session->stop());
    settle();
    engine.step(); // which model is loaded
    settle();
    clock.advance(std::chrono::seconds(5));
    drain();
    EXPECT_TRUE(finished);
    EXPECT_DOUBLE_EQ(noted.of(*models.file)->speed, 2);
    session.reset();
}

TEST_F(SessionModel, SelectingWhileAModelLoadsStartsNoSecondLoadAndFinishLoadsTheRightOne)
{
    engine.isPrompt = false;
    engine.model.reset();
    engine.loads.clear();
    makeSession();
    settle();
    engine.step();
    settle();
    ASSERT_TRUE(session->isModelLoading());
    models.file = QStringLiteral("/models/small.bin");
    settings.selectedModelID.set(QStringLiteral("nb-whisper-small-q5_0"));
    drain();
    EXPECT_EQ(engine.loads, QStringList{QStringLiteral("/models/medium.bin")});

    engine.isPrompt = true;
    record(16000);
    static_cast<void>(finish(session->stop()));
    EXPECT_EQ(engine.loads.constLast(), QStringLiteral("/models/small.bin"));
    EXPECT_EQ(engine.model, QStringLiteral("/models/small.bin"));
}

TEST_F(SessionModel, AShortDictationDuringTheFirstLoadWaitsForItAndWarmsUpOnce)
{
    engine.isPrompt = false;
    engine.model.reset();
    engine.loads.clear();
    engine.transcriptions.clear();
    makeSession();
    record(16000);
    begin(session->stop());
    ASSERT_TRUE(waitUntil([&] {
        if (engine.waiting() > 0)
            engine.step();
        return finished.has_value();
    }));
    EXPECT_EQ((*finished)->kind, Outcome::Kind::transcript);
    const auto warmUps = std::ranges::count_if(
        engine.transcriptions, [](const auto& asked) { return asked.samples->size() == 24000; });
    EXPECT_EQ(warmUps, 1);
    EXPECT_FALSE(session->isModelLoading());
}

TEST_F(SessionModel, StartingARecordingLoadsTheModelMeanwhile)
{
    settle();
    engine.model.reset();
    engine.loads.clear();
    record(16000);
    settle();
    EXPECT_EQ(engine.loads.size(), 1);
    EXPECT_EQ(session->state(), State::recording);
}

} // namespace tulvane::test
