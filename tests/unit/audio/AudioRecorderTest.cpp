#include "RecorderFixture.h"

#include <gmock/gmock.h>

#include <limits>

using namespace tulvane;
using namespace tulvane::test;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

namespace {
class AudioRecorderTest : public RecorderFixture {};
} // namespace

TEST_F(AudioRecorderTest, IsIdleWhenMade)
{
    EXPECT_EQ(recorder.level(), 0.0F);
    EXPECT_FALSE(recorder.isRecording());
    EXPECT_EQ(recorder.startedAt(), std::nullopt);
    EXPECT_EQ(input.enginesMade(), 0);
}

TEST_F(AudioRecorderTest, StartsTheEngineWithATapAndSaysSo)
{
    input.setFormat({44100, 2});
    bool published = false;
    QObject::connect(&recorder, &AudioRecorder::isRecordingChanged, &recorder,
                     [&](bool recording) { published = recording && recorder.startedAt().has_value(); });
    start();
    EXPECT_EQ(input.calls(),
              QStringList({QStringLiteral("make"), QStringLiteral("tap 4096"), QStringLiteral("start")}));
    EXPECT_TRUE(recorder.isRecording());
    EXPECT_TRUE(published);
    EXPECT_EQ(recorder.startedAt(), clock.now());
    EXPECT_EQ(recorder.level(), 0.0F);
    EXPECT_EQ(infoLines(), QStringList(QStringLiteral("Recording started (44100 Hz, 2 ch → 16 kHz mono)")));
}

TEST_F(AudioRecorderTest, TheRateIsLoggedWithoutDecimals)
{
    input.setFormat({47999.6, 8});
    start();
    EXPECT_EQ(infoLines(), QStringList(QStringLiteral("Recording started (48000 Hz, 8 ch → 16 kHz mono)")));
}

TEST_F(AudioRecorderTest, StopsInOrderAndHandsOverTheSamples)
{
    input.setFormat({16000, 1});
    start();
    const auto spoken = sine(300, 16000, 24000);
    ASSERT_TRUE(input.push(spoken));
    log.clear();
    const auto samples = recorder.stop();
    EXPECT_EQ(samples, spoken);
    EXPECT_EQ(input.calls().mid(3),
              QStringList({QStringLiteral("untap"), QStringLiteral("stop"), QStringLiteral("drop")}));
    EXPECT_FALSE(recorder.isRecording());
    EXPECT_EQ(recorder.startedAt(), std::nullopt);
    EXPECT_EQ(infoLines(), QStringList(QStringLiteral("Recording stopped: 1.5s")));
    EXPECT_THAT(errorLines(), IsEmpty());
}

TEST_F(AudioRecorderTest, EveryPropertyChangeIsPublishedOnce)
{
    QStringList changes;
    QObject::connect(&recorder, &AudioRecorder::isRecordingChanged, &recorder,
                     [&](bool on) { changes.append(on ? QStringLiteral("on") : QStringLiteral("off")); });
    QObject::connect(&recorder, &AudioRecorder::startedAtChanged, &recorder, [&] {
        changes.append(recorder.startedAt() ? QStringLiteral("date") : QStringLiteral("none"));
    });
    start();
    start();
    std::ignore = recorder.stop();
    std::ignore = recorder.stop();
    EXPECT_EQ(changes, QStringList({QStringLiteral("date"), QStringLiteral("on"), QStringLiteral("off"),
                                    QStringLiteral("none")}));
}

TEST_F(AudioRecorderTest, WithoutAMicrophoneThereIsNoRecording)
{
    const double nan = std::numeric_limits<double>::quiet_NaN();
    for (const AudioFormat none : {AudioFormat{}, {0, 1}, {48000, 0}, {-1, 1}, {48000, -1}, {nan, 1}}) {
        input.setFormat(none);
        const auto started = recorder.start();
        ASSERT_FALSE(started);
        EXPECT_EQ(started.error(), RecorderError::noInputDevice());
        EXPECT_FALSE(recorder.isRecording());
        EXPECT_EQ(recorder.startedAt(), std::nullopt);
    }
    EXPECT_FALSE(input.calls().contains(QStringLiteral("tap 4096")));
    EXPECT_THAT(infoLines(), IsEmpty());
}

TEST_F(AudioRecorderTest, AFormatThatCannotBeConvertedIsNotSupported)
{
    input.setFormat({400, 1});
    const auto started = recorder.start();
    ASSERT_FALSE(started);
    EXPECT_EQ(started.error(), RecorderError::unsupportedFormat());
    EXPECT_FALSE(recorder.isRecording());
    EXPECT_EQ(input.calls(), QStringList({QStringLiteral("make"), QStringLiteral("drop")}));
}

TEST_F(AudioRecorderTest, AnEngineThatDoesNotStartLosesItsTap)
{
    input.setStartFailure(QStringLiteral("the device is busy"));
    const auto started = recorder.start();
    ASSERT_FALSE(started);
    EXPECT_EQ(started.error(), RecorderError::engineStartFailed(QStringLiteral("the device is busy")));
    EXPECT_EQ(input.calls(),
              QStringList({QStringLiteral("make"), QStringLiteral("tap 4096"), QStringLiteral("start"),
                           QStringLiteral("untap"), QStringLiteral("drop")}));
    EXPECT_FALSE(recorder.isRecording());
    EXPECT_EQ(recorder.startedAt(), std::nullopt);
    EXPECT_THAT(recorder.stop(), IsEmpty());
    EXPECT_THAT(infoLines(), IsEmpty());

    input.setStartFailure(std::nullopt);
    start();
    EXPECT_TRUE(recorder.isRecording());
}

TEST_F(AudioRecorderTest, ASecondStartIsIgnored)
{
    input.setFormat({16000, 1});
    start();
    const auto startedAt = recorder.startedAt();
    ASSERT_TRUE(input.push(std::vector<float>(100, 0.5F)));
    clock.advance(std::chrono::seconds(3));
    log.clear();
    start();
    EXPECT_EQ(input.enginesMade(), 1);
    EXPECT_EQ(recorder.startedAt(), startedAt);
    EXPECT_THAT(log.lines(), IsEmpty());
    EXPECT_EQ(recorder.stop().size(), 100U);
}

TEST_F(AudioRecorderTest, AStopWhileIdleGivesNothingAndSaysNothing)
{
    EXPECT_THAT(recorder.stop(), IsEmpty());
    start();
    std::ignore = recorder.stop();
    log.clear();
    EXPECT_THAT(recorder.stop(), IsEmpty());
    EXPECT_THAT(log.lines(), IsEmpty());
}

TEST_F(AudioRecorderTest, AStopBeforeAnySoundGivesNothingAndLogsZeroSeconds)
{
    start();
    EXPECT_THAT(recorder.stop(), IsEmpty());
    EXPECT_EQ(infoLines().last(), QStringLiteral("Recording stopped: 0.0s"));
    EXPECT_THAT(errorLines(), IsEmpty());
}

TEST_F(AudioRecorderTest, EveryRecordingHasAnEngineOfItsOwnAndOnlyItsOwnSamples)
{
    input.setFormat({16000, 1});
    start();
    ASSERT_TRUE(input.push(std::vector<float>(500, 0.5F)));
    EXPECT_EQ(recorder.stop().size(), 500U);
    EXPECT_FALSE(input.isOpen());
    EXPECT_FALSE(input.push(std::vector<float>(100, 0.5F)));

    input.setFormat({48000, 2});
    start();
    EXPECT_EQ(input.enginesMade(), 2);
    ASSERT_TRUE(input.push(std::vector<float>(std::size_t{960} * 2, 0.25F)));
    EXPECT_EQ(recorder.stop().size(), 320U);
}

TEST_F(AudioRecorderTest, StereoAt44100GivesAbout16000SamplesASecond)
{
    input.setFormat({44100, 2});
    start();
    ASSERT_TRUE(input.push(sine(440, 44100, 441000, 2), 882));
    EXPECT_NEAR(static_cast<double>(recorder.stop().size()), 160000, 1);
}

TEST_F(AudioRecorderTest, TheLastSyllableIsWhole)
{
    input.setFormat({48000, 1});
    start();
    std::vector<float> spoken(48000, 0.0F);
    std::ranges::copy(sine(1000, 48000, 960), spoken.end() - 960);
    ASSERT_TRUE(input.push(spoken));
    const auto samples = recorder.stop();
    ASSERT_EQ(samples.size(), 16000U);
    EXPECT_GT(rmsOf(std::span(samples).last(320)), 0.3);
}

TEST_F(AudioRecorderTest, ABufferThatCannotBeConvertedIsLoggedAndDropped)
{
    input.setFormat({16000, 2});
    start();
    ASSERT_TRUE(input.push(std::vector<float>{0.1F, 0.1F}));
    ASSERT_TRUE(input.push(std::vector<float>{0.2F, 0.2F, 0.2F}));
    ASSERT_TRUE(input.push(std::vector<float>{0.3F, 0.3F}));
    EXPECT_EQ(errorLines(), QStringList(QStringLiteral(
                                "Conversion error: 3 samples are no whole number of frames of 2 channels")));
    EXPECT_THAT(recorder.stop(), ElementsAre(0.1F, 0.3F));
}

TEST_F(AudioRecorderTest, ARecorderThatGoesClosesTheMicrophone)
{
    {
        AudioRecorder brief(input, clock);
        ASSERT_TRUE(brief.start());
        ASSERT_TRUE(input.push(std::vector<float>(4800, 0.5F)));
        EXPECT_TRUE(input.isOpen());
    }
    EXPECT_FALSE(input.isOpen());
    settle(); // the level that was on its way reaches nobody
}

TEST_F(AudioRecorderTest, AConfigurationChangeIsLoggedAndReported)
{
    int reports = 0;
    recorder.setEngineConfigurationChanged([&] { ++reports; });
    start();
    input.changeConfiguration();
    EXPECT_EQ(reports, 0); // from the event loop, never from within
    settle();
    EXPECT_EQ(reports, 1);
    EXPECT_EQ(errorLines(),
              QStringList(QStringLiteral("Audio engine configuration changed while recording")));
    EXPECT_TRUE(recorder.isRecording());
    EXPECT_TRUE(input.isOpen());
}

TEST_F(AudioRecorderTest, AConfigurationChangeWithoutACallbackIsOnlyLogged)
{
    start();
    input.changeConfiguration();
    settle();
    EXPECT_EQ(errorLines(),
              QStringList(QStringLiteral("Audio engine configuration changed while recording")));
    EXPECT_TRUE(recorder.isRecording());
}

TEST_F(AudioRecorderTest, AMicrophoneThatStopsDeliveringIsLoggedAndReported)
{
    int reports = 0;
    recorder.setInputStalled([&] { ++reports; });
    start();
    input.stall();
    settle();
    EXPECT_EQ(reports, 1);
    EXPECT_EQ(errorLines(),
              QStringList(QStringLiteral("The microphone stopped delivering sound while recording")));
    EXPECT_TRUE(recorder.isRecording());
}

TEST_F(AudioRecorderTest, TheCallbackMayStopTheRecording)
{
    std::vector<float> samples;
    recorder.setEngineConfigurationChanged([&] { samples = recorder.stop(); });
    input.setFormat({16000, 1});
    start();
    ASSERT_TRUE(input.push(std::vector<float>(160, 0.5F)));
    input.changeConfiguration();
    settle();
    EXPECT_EQ(samples.size(), 160U);
    EXPECT_FALSE(recorder.isRecording());
}

TEST_F(AudioRecorderTest, AChangeThatComesWithTheStopIsForgotten)
{
    int reports = 0;
    recorder.setEngineConfigurationChanged([&] { ++reports; });
    start();
    input.changeConfiguration();
    std::ignore = recorder.stop();
    start();
    settle();
    EXPECT_EQ(reports, 0);
    EXPECT_THAT(errorLines(), IsEmpty());
}

TEST_F(AudioRecorderTest, ARecordingOfZerosAloneNamesTheDevice)
{
    input.setDeviceName(QStringLiteral("Muted Headset"));
    input.setFormat({48000, 1});
    start();
    ASSERT_TRUE(input.push(std::vector<float>(48000, 0.0F)));
    const auto samples = recorder.stop();
    EXPECT_EQ(samples.size(), 16000U);
    EXPECT_FALSE(AudioRecorder::peakExceeds(samples, -50));
    EXPECT_EQ(errorLines(), QStringList(QStringLiteral("Every sample from “Muted Headset” was zero")));
}

TEST_F(AudioRecorderTest, ATapOfZerosAloneIsNoErrorOfTheMicrophone)
{
    input.setFormat({48000, 1});
    for (const std::size_t frames : {std::size_t{0}, std::size_t{480}, std::size_t{16000}}) {
        start();
        ASSERT_TRUE(input.push(std::vector<float>(frames, 0.0F)));
        std::ignore = recorder.stop();
        EXPECT_THAT(errorLines(), IsEmpty()) << frames;
    }
}

TEST_F(AudioRecorderTest, OneFaintSampleIsNotSilence)
{
    for (const std::size_t at : {std::size_t{0}, std::size_t{24000}, std::size_t{47999}}) {
        input.setFormat({48000, 1});
        start();
        std::vector<float> nearly(48000, 0.0F);
        nearly[at] = 1e-5F;
        ASSERT_TRUE(input.push(nearly));
        std::ignore = recorder.stop();
        EXPECT_THAT(errorLines(), IsEmpty()) << at;
    }
}
