#include <audio/files/PlainWave.h>
#include <dictation/Demonstration.h>
#include <platform/fake/FakeSounds.h>
#include <platform/fake/FakeUserDefaults.h>
#include <settings/AppSettings.h>
#include <support/FakeRecognizer.h>
#include <support/FakeScheduler.h>
#include <support/Paths.h>

#include <QCoreApplication>

#include <gtest/gtest.h>

using namespace std::chrono_literals;

namespace tulvane::test {

namespace {

using State = Demonstration::State;

class DemonstrationTest : public testing::Test {
protected:
    static void settle()
    {
        for (int i = 0; i < 5; ++i)
            QCoreApplication::processEvents();
    }
    void pass(std::chrono::milliseconds time)
    {
        scheduler.advance(time);
        settle();
    }

    FakeUserDefaults defaults;
    AppSettings settings{defaults};
    FakeRecognizer engine;
    FakeSounds sounds;
    FakeScheduler scheduler;
    Recognizer::Samples voice = std::make_shared<const std::vector<float>>(32000, 0.1F);
    QList<AppLanguage> asked;
    std::optional<Demonstration> demonstration{
        std::in_place, Demonstration::Dependencies{.settings = settings,
                                                   .engine = engine,
                                                   .sounds = sounds,
                                                   .scheduler = scheduler,
                                                   .modelFile = QStringLiteral("/demo.bin"),
                                                   .speech =
                                                       [this](AppLanguage language) {
                                                           asked.append(language);
                                                           return voice;
                                                       },
                                                   .threadCount = 3}};
};

} // namespace

TEST_F(DemonstrationTest, DoesNothingBeforeItIsAskedTo)
{
    pass(1h);
    EXPECT_EQ(demonstration->state(), State::idle);
    EXPECT_EQ(sounds.speech, nullptr);
    EXPECT_TRUE(engine.loads.isEmpty());
}

TEST_F(DemonstrationTest, PlaysTheVoiceAndShowsWhatTheModelWroteWhenItHasEnded)
{
    demonstration->start();
    EXPECT_EQ(demonstration->state(), State::running);
    EXPECT_EQ(sounds.speech, voice);
    pass(1999ms);
    EXPECT_EQ(demonstration->state(), State::running) << "the voice still speaks";
    EXPECT_TRUE(demonstration->text().isEmpty());
    pass(1ms);
    EXPECT_EQ(demonstration->state(), State::done);
    EXPECT_EQ(demonstration->text(), QStringLiteral("Hei på deg")) << "cleaned like every dictation";
    EXPECT_EQ(engine.loads, QStringList{QStringLiteral("/demo.bin")});
    ASSERT_EQ(engine.transcriptions.size(), 1U);
    EXPECT_EQ(engine.transcriptions[0].samples, voice);
    EXPECT_EQ(engine.transcriptions[0].options.threadCount, 3);
}

TEST_F(DemonstrationTest, SpeaksTheInterfacesLanguageWhichTheModelRecognises)
{
    for (const AppLanguage language : allCases<AppLanguage>()) {
        settings.appLanguage.set(language);
        demonstration->start();
        pass(2s);
        EXPECT_EQ(asked.constLast(), language);
        EXPECT_EQ(engine.transcriptions.back().options.language, QStringLiteral("auto"));
    }
}

TEST_F(DemonstrationTest, ASlowRecogniserIsWaitedForAndASecondStartMeanwhileChangesNothing)
{
    engine.isPrompt = false;
    demonstration->start();
    demonstration->start();
    EXPECT_EQ(asked.size(), 1);
    engine.step();
    pass(10s);
    EXPECT_EQ(demonstration->state(), State::running);
    engine.step();
    settle();
    EXPECT_EQ(demonstration->state(), State::done);
    demonstration->start();
    EXPECT_EQ(demonstration->state(), State::running) << "it can be heard again";
    EXPECT_TRUE(demonstration->text().isEmpty());
}

TEST_F(DemonstrationTest, AFailureSaysWhyAndCanBeTriedAgain)
{
    engine.loadError = EngineError::modelLoadFailed(QStringLiteral("/demo.bin"));
    demonstration->start();
    pass(2s);
    EXPECT_EQ(demonstration->state(), State::failed);
    EXPECT_EQ(demonstration->failure(),
              EngineError::modelLoadFailed(QStringLiteral("/demo.bin")).description());
    engine.loadError.reset();
    engine.transcribeError = EngineError::transcriptionFailed(-7);
    demonstration->start();
    EXPECT_TRUE(demonstration->failure().isEmpty());
    pass(2s);
    EXPECT_EQ(demonstration->failure(), EngineError::transcriptionFailed(-7).description());
    engine.transcribeError.reset();
    demonstration->start();
    pass(2s);
    EXPECT_EQ(demonstration->state(), State::done);
}

TEST_F(DemonstrationTest, WithoutTheRecordingItSaysSo)
{
    for (const auto& nothing : {Recognizer::Samples(), std::make_shared<const std::vector<float>>()}) {
        voice = nothing;
        demonstration->start();
        EXPECT_EQ(demonstration->state(), State::failed);
        EXPECT_FALSE(demonstration->failure().isEmpty());
        EXPECT_TRUE(engine.loads.isEmpty());
    }
}

TEST_F(DemonstrationTest, MayEndInTheMiddle)
{
    engine.isPrompt = false;
    demonstration->start();
    demonstration.reset();
    engine.step();
    pass(1h);
    EXPECT_EQ(engine.waiting(), 0U);
}

TEST_F(DemonstrationTest, AnEndWhileTheVoiceSpeaksLeavesNothingScheduled)
{
    demonstration->start();
    settle();
    ASSERT_EQ(scheduler.pending().size(), 1U);
    demonstration.reset();
    EXPECT_TRUE(scheduler.pending().empty());
}

TEST(DemonstrationVoice, IsThereInEachLanguageOfTheInterface)
{
    for (const AppLanguage language : allCases<AppLanguage>()) {
        const QString path =
            sourceFolder() + QStringLiteral("/resources/speech/%1.wav").arg(rawValue(language));
        const auto sound = readPlainWave(path);
        ASSERT_TRUE(sound) << qPrintable(path);
        EXPECT_GT(sound->seconds, 1.0);
        EXPECT_LT(sound->seconds, 5.0);
    }
}

} // namespace tulvane::test
