#include "EngineFixture.h"

#include <support/Speech.h>

#include <QElapsedTimer>
#include <QRegularExpression>

#include <cmath>
#include <limits>

namespace tulvane {
namespace {

constexpr auto saidInNorwegian = "Hei, dette er en test.";
constexpr auto saidInEnglish = "Hello, this is a test.";

class EngineTranscription : public test::EngineTest {
protected:
    void SetUp() override
    {
        ASSERT_TRUE(loadDemo().has_value());
        m_log.clear();
    }
    [[nodiscard]] static std::vector<float> norwegian()
    {
        static const auto samples = test::speakSentence(QString::fromUtf8(saidInNorwegian), u"nb"_qs);
        return samples;
    }
    [[nodiscard]] static std::vector<float> english()
    {
        static const auto samples = test::speakSentence(QString::fromUtf8(saidInEnglish), u"en-us"_qs);
        return samples;
    }
    QString heard(std::vector<float> samples, const TranscriptionOptions& options)
    {
        const Text text = transcribe(std::move(samples), options);
        EXPECT_TRUE(text.has_value()) << (text ? "" : qPrintable(text.error().description()));
        return text.value_or(u"(failed)"_qs);
    }
};

TEST_F(EngineTranscription, writesWhatWasSaid)
{
    // With the space that the library's texts begin with: nothing is trimmed.
    EXPECT_EQ(heard(norwegian(), {.language = u"no"_qs, .threadCount = 1}),
              u' ' + QString::fromUtf8(saidInNorwegian));
    EXPECT_EQ(m_language, u"no");
    EXPECT_EQ(heard(english(), {.language = u"en"_qs, .threadCount = 1}),
              u' ' + QString::fromUtf8(saidInEnglish));
    EXPECT_EQ(m_language, u"en");
}

TEST_F(EngineTranscription, detectsTheLanguage)
{
    EXPECT_EQ(heard(english(), {.language = u"auto"_qs, .threadCount = 1}),
              u' ' + QString::fromUtf8(saidInEnglish));
    EXPECT_EQ(m_language, u"en");
    EXPECT_TRUE(transcribe(norwegian(), {.language = u"nn"_qs, .threadCount = 1}).has_value());
    EXPECT_EQ(m_language, u"nn");
}

TEST_F(EngineTranscription, joinsSegmentsAsTheyStand)
{
    // Two windows of 30 s give two segments, each with the space that it begins with.
    std::vector<float> samples = norwegian();
    samples.resize(std::size_t{30} * 16'000, 0.0F);
    const auto second = english();
    samples.insert(samples.end(), second.begin(), second.end());
    const QString text = heard(samples, {.language = u"no"_qs, .threadCount = 1});
    EXPECT_TRUE(text.startsWith(u' ' + QString::fromUtf8(saidInNorwegian) + u' ')) << qPrintable(text);
    EXPECT_FALSE(text.contains(u"  ")) << qPrintable(text);
}

TEST_F(EngineTranscription, saysHowMuchItTranscribedOfWhatItWasGiven)
{
    const QRegularExpression line(u"^Transcribed (\\d+\\.\\d)s of audio in \\d+\\.\\d\\ds$"_qs);
    const std::pair<std::size_t, QString> expected[] = {
        {0, u"0.0"_qs}, {1, u"0.0"_qs}, {19'199, u"1.2"_qs}, {24'000, u"1.5"_qs}, {31'300, u"2.0"_qs}};
    for (const auto& [count, seconds] : expected) {
        m_log.clear();
        ASSERT_TRUE(transcribe(std::vector<float>(count, 0.0F)).has_value()) << count;
        ASSERT_EQ(milestones().size(), 1);
        EXPECT_EQ(line.match(milestones().first()).captured(1), seconds) << qPrintable(milestones().first());
    }
}

TEST_F(EngineTranscription, shortAudioIsPaddedAndGivesNoLeftOvers)
{
    ASSERT_FALSE(heard(norwegian(), {.language = u"no"_qs, .threadCount = 1}).isEmpty());
    // With no samples, the library by itself would decode the sentence before once more.
    for (const std::size_t count : {0U, 1U, 100U, 200U, 201U, 1600U, 19'199U, 19'200U})
        EXPECT_EQ(heard(std::vector<float>(count, 0.0F), {.language = u"no"_qs, .threadCount = 1}), QString())
            << count;
}

TEST_F(EngineTranscription, paddingIsTheSameAsSilence)
{
    std::vector<float> piece = norwegian();
    piece.resize(12'000);
    std::vector<float> padded = piece;
    padded.resize(19'200, 0.0F);
    const TranscriptionOptions options{.language = u"no"_qs, .threadCount = 1};
    EXPECT_EQ(heard(piece, options), heard(padded, options));
}

TEST_F(EngineTranscription, carriesNothingOverFromTheTakeBefore)
{
    const TranscriptionOptions options{.language = u"no"_qs, .threadCount = 1};
    const QString first = heard(norwegian(), options);
    (void)heard(english(), {.language = u"en"_qs, .initialPrompt = u"Kari Nordmann"_qs, .threadCount = 1});
    EXPECT_EQ(heard(norwegian(), options), first);
}

TEST_F(EngineTranscription, samplesThatAreNoSoundDoNoHarm)
{
    constexpr float infinity = std::numeric_limits<float>::infinity();
    const TranscriptionOptions options{.language = u"no"_qs, .threadCount = 1};
    EXPECT_EQ(heard(std::vector<float>(32'000, std::nanf("")), options), QString());
    std::vector<float> holed = norwegian();
    holed[10] = std::nanf("");
    EXPECT_EQ(heard(holed, options),
              u' ' + QString::fromUtf8(saidInNorwegian)); // one sample does not spoil a take
    for (const float value : {infinity, -infinity, 3e38F})
        EXPECT_TRUE(transcribe(std::vector<float>(32'000, value), options).has_value());
}

TEST_F(EngineTranscription, takesAnyPromptInLittleTime)
{
    const QString prompts[] = {QString(),
                               u"  \n\t "_qs,
                               u"Kari"_qs,
                               u"Åse, Bjørn og Ærlig."_qs,
                               u"blåbær "_qs.repeated(40),
                               u"blåbær "_qs.repeated(5000),
                               QString(20'000, u'x'),
                               QString(50'000, u'x'),
                               u"å"_qs.repeated(50'000),
                               u"😀"_qs.repeated(25'000),
                               u"日本語"_qs.repeated(10'000),
                               QString(50'000, u'\n')};
    for (const QString& prompt : prompts) {
        QElapsedTimer timer;
        timer.start();
        EXPECT_TRUE(
            transcribe(silence(1.2), {.language = u"no"_qs, .initialPrompt = prompt, .threadCount = 1})
                .has_value());
        EXPECT_LT(timer.elapsed(), 15'000) << prompt.size();
    }
}

TEST_F(EngineTranscription, anUnknownLanguageFailsAndKeepsTheModel)
{
    for (const char* code : {"xx", "NO", "norsk", "no ", "yue"}) {
        const Text text = transcribe(silence(1.2), {.language = QString::fromUtf8(code), .threadCount = 1});
        ASSERT_FALSE(text.has_value()) << code;
        EXPECT_EQ(text.error(), EngineError::transcriptionFailed(EngineError::unknownLanguage)) << code;
        EXPECT_EQ(
            text.error().description(),
            u"Transcription failed (whisper error -100).\nThe speech model does not know the language “%1”."_qs
                .arg(QString::fromUtf8(code)));
    }
    EXPECT_EQ(loadedModel(), demo());
    EXPECT_EQ(heard(norwegian(), {.language = u"no"_qs, .threadCount = 1}),
              u' ' + QString::fromUtf8(saidInNorwegian));
}

TEST_F(EngineTranscription, aLanguageThatIsNoCStringFailsWithTheProgramsOwnCode)
{
    const Text text =
        transcribe(silence(1.2), {.language = QString(u"no"_qs + QChar::Null), .threadCount = 1});
    ASSERT_FALSE(text.has_value());
    EXPECT_EQ(text.error(), EngineError::transcriptionFailed(-1));
    EXPECT_EQ(loadedModel(), demo());
}

TEST_F(EngineTranscription, aTakeTooLongForTheMemoryFailsAndKeepsTheModel)
{
    m_memory.setAvailable(70'000'000);
    EXPECT_TRUE(transcribe(silence(2)).has_value());
    const Text text = transcribe(silence(60));
    ASSERT_FALSE(text.has_value());
    EXPECT_EQ(text.error(), EngineError::transcriptionFailed(EngineError::notEnoughMemory));
    EXPECT_TRUE(text.error().description().endsWith(u" MB of memory, and 70 MB are available."))
        << qPrintable(text.error().description());
    EXPECT_TRUE(m_log.texts("whisper", QtCriticalMsg).join(u'\n').contains(u"and 70 MB are available"));
    EXPECT_EQ(loadedModel(), demo());
}

TEST_F(EngineTranscription, worksWithAnyThreadCount)
{
    // Not more than any machine has cores: beyond that the library's threads wait for each other by spinning.
    for (const qint64 threads : {-5, 0, 1, 2})
        EXPECT_EQ(heard(norwegian(), {.language = u"no"_qs, .threadCount = threads}),
                  u' ' + QString::fromUtf8(saidInNorwegian))
            << threads;
}

TEST_F(EngineTranscription, runsJobsInTheOrderAsked)
{
    const TranscriptionOptions options{.language = u"no"_qs, .threadCount = 1};
    const auto first = begin(silence(20), options);
    const auto second = begin(silence(2), options);
    const auto third = m_engine->load(m_folder.file(u"missing"_qs));
    const auto fourth = begin(silence(2), options);
    EXPECT_TRUE(test::await(second, std::chrono::seconds(60)).has_value());
    EXPECT_TRUE(first.isFinished());
    EXPECT_FALSE(test::await(third).has_value());
    EXPECT_EQ(test::await(fourth).error(), EngineError::noModelLoaded());
    ASSERT_EQ(milestones().size(), 3);
    EXPECT_TRUE(milestones()[0].startsWith(u"Transcribed 20.0s of audio"));
    EXPECT_TRUE(milestones()[1].startsWith(u"Transcribed 2.0s of audio"));
    EXPECT_EQ(milestones()[2], u"Unloaded model");
}

TEST_F(EngineTranscription, doesNotBlockItsCaller)
{
    QElapsedTimer timer;
    timer.start();
    const auto text = begin(silence(29), {.language = u"no"_qs, .threadCount = 1});
    const auto model = m_engine->loadedModel();
    EXPECT_FALSE(text.isFinished());
    EXPECT_FALSE(model.isFinished()) << "it answers for what was asked before it";
    EXPECT_LT(timer.elapsed(), 1000);
    EXPECT_TRUE(test::await(text, std::chrono::seconds(60)).has_value());
    EXPECT_EQ(test::await(model), demo());
}

TEST_F(EngineTranscription, destructionWaitsForTheJobInFlightAndAnswersTheRest)
{
    const TranscriptionOptions detecting{.language = u"auto"_qs, .threadCount = 1};
    auto running = begin(norwegian(), detecting);
    auto waiting = begin(norwegian(), detecting);
    auto loading = m_engine->load(u"other.bin"_qs);
    // The library says this in the middle of its work.
    ASSERT_TRUE(test::waitUntil([&] { return m_log.contains(u"auto-detected language"_qs); }));
    m_engine.reset();
    ASSERT_TRUE(running.isFinished() && waiting.isFinished() && loading.isFinished());
    EXPECT_TRUE(running.takeResult().has_value());
    EXPECT_EQ(waiting.takeResult().error(), EngineError::noModelLoaded());
    EXPECT_EQ(loading.takeResult().error(), EngineError::modelLoadFailed(u"other.bin"_qs));
}

TEST_F(EngineTranscription, twoEnginesDoNotDisturbEachOther)
{
    WhisperEngine other(m_backends, m_memory);
    ASSERT_TRUE(test::await(other.load(demo())).has_value());
    const TranscriptionOptions options{.language = u"no"_qs, .threadCount = 1};
    const auto here = begin(norwegian(), options);
    const auto there = other.transcribe(std::make_shared<const std::vector<float>>(norwegian()), options);
    for (const auto& answer : {here, there})
        EXPECT_EQ(test::await(answer, std::chrono::seconds(60))->text,
                  u' ' + QString::fromUtf8(saidInNorwegian));
}

} // namespace
} // namespace tulvane
