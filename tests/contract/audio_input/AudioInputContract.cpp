#include "AudioWorld.h"
#include "Speech.h"
#include "StartTime.h"

#include <audio/AudioRecorder.h>
#include <audio/SampleConverter.h>
#include <support/Await.h>
#include <support/LogCapture.h>

#include <QElapsedTimer>
#include <QThread>

#include <gmock/gmock.h>

#include <cmath>
#include <mutex>
#include <stdexcept>

using namespace tulvane;
using namespace tulvane::test;
using namespace std::chrono_literals;

namespace {

/// What a tap was given. The samples are guarded; they arrive on the audio thread.
struct Captured {
    AudioTap tap()
    {
        return [this](std::span<const float> buffer) {
            const std::scoped_lock guard(lock);
            onMainThread = onMainThread || QThread::currentThread() == QCoreApplication::instance()->thread();
            sizes.push_back(buffer.size());
            samples.insert(samples.end(), buffer.begin(), buffer.end());
        };
    }
    [[nodiscard]] std::size_t size()
    {
        const std::scoped_lock guard(lock);
        return samples.size();
    }

    std::mutex lock;
    std::vector<std::size_t> sizes;
    std::vector<float> samples;
    bool onMainThread = false;
};

class AudioInputContract : public ::testing::TestWithParam<Backend> {
protected:
    /// A quarter of a second of sound, so that a microphone that is open has something to hear.
    void sound() { world->sound(speech(0.25, world->hardware().sampleRate)); }

    /// An engine at work. Where the whole machine stood still for longer than a start may take, as crowded
    /// hosts' do now and then, it is started once more.
    [[nodiscard]] std::unique_ptr<AudioEngine> started(Captured& into, std::uint32_t mostFrames = 4096) const
    {
        QString reason;
        for (int attempt = 0; attempt < 2; ++attempt) {
            const StartTime time;
            auto engine = world->input().makeEngine();
            engine->installTap(mostFrames, into.tap());
            const auto started = engine->start();
            if (started)
                return engine;
            reason = started.error();
            if (!time.isUsedUp())
                break;
        }
        throw std::runtime_error("the microphone does not start: " + reason.toStdString());
    }

    LogCapture log;
    Captured captured;
    std::unique_ptr<AudioWorld> world = GetParam().make();
};

class AudioInputFormats : public AudioInputContract {};

} // namespace

TEST_P(AudioInputFormats, WhatSoundsIsWhatIsRecorded)
{
    const SystemClock clock;
    const double rate = world->hardware().sampleRate;
    const auto ideal = speech(2, recordingSampleRate);
    std::vector<float> samples;
    const auto isLong = [&] {
        return std::abs(soundingLength(samples) - soundingLength(ideal)) <= 0.01 * soundingLength(ideal);
    };
    // A server that got no processor in time leaves a period of its own out, of which no program hears: a
    // take without is to be had in three.
    for (int take = 0; take < 3 && (likenessToSpeech(samples, 2) < 0.99 || !isLong()); ++take) {
        AudioRecorder recorder(world->input(), clock);
        const auto started = recorder.start();
        ASSERT_TRUE(started) << qPrintable(started.error().description());
        world->sound(speech(2, rate));
        // What sounded last is still on its way.
        runEventLoopFor(200ms);
        samples = recorder.stop();
    }
    EXPECT_GE(likenessToSpeech(samples, 2), 0.99);
    EXPECT_NEAR(soundingLength(samples), soundingLength(ideal), 0.01 * soundingLength(ideal));
    EXPECT_TRUE(log.contains(QStringLiteral("Recording started (%1 Hz, %2 ch → 16 kHz mono)")
                                 .arg(rate)
                                 .arg(world->hardware().channels)));
}

TEST_P(AudioInputContract, AnEngineKnowsTheHardwareWithoutOpeningIt)
{
    const auto engine = world->input().makeEngine();
    EXPECT_EQ(engine->inputFormat(), world->hardware());
    EXPECT_EQ(engine->deviceName(), world->deviceName());
    EXPECT_FALSE(world->isOpen());
}

TEST_P(AudioInputContract, TheTapGetsWholeFramesOnTheAudioThreadAndNeverTooMany)
{
    const auto engine = started(captured, 100);
    sound();
    ASSERT_TRUE(waitUntil([&] { return captured.size() > 0; }));
    engine->removeTap();
    engine->stop();
    const auto channels = static_cast<std::size_t>(world->hardware().channels);
    EXPECT_THAT(captured.sizes, ::testing::Each(::testing::Le(100 * channels)));
    for (const std::size_t size : captured.sizes)
        EXPECT_EQ(size % channels, 0U);
    EXPECT_FALSE(captured.onMainThread);
}

TEST_P(AudioInputContract, AfterItsRemovalTheTapIsSilent)
{
    const auto engine = started(captured);
    sound();
    engine->removeTap();
    const std::size_t before = captured.size();
    EXPECT_GT(before, 0U);
    sound();
    EXPECT_EQ(captured.size(), before);
    engine->removeTap(); // there is none any more, which is fine
    engine->stop();
}

TEST_P(AudioInputContract, StoppingClosesTheMicrophone)
{
    const auto engine = started(captured);
    EXPECT_TRUE(world->isOpen());
    engine->stop();
    EXPECT_TRUE(waitUntil([&] { return !world->isOpen(); }));
    const std::size_t before = captured.size();
    sound();
    EXPECT_EQ(captured.size(), before);
    engine->stop();
}

TEST_P(AudioInputContract, DroppingARunningEngineClosesTheMicrophone)
{
    auto engine = started(captured);
    engine.reset();
    EXPECT_TRUE(waitUntil([&] { return !world->isOpen(); }));
}

TEST_P(AudioInputContract, OneEngineFollowsTheOther)
{
    for (int round = 0; round < 3; ++round) {
        Captured mine;
        const auto engine = started(mine);
        sound();
        EXPECT_GT(mine.size(), 0U);
        engine->removeTap();
        engine->stop();
    }
}

TEST_P(AudioInputContract, ALostMicrophoneIsReportedOnceOnTheMainThread)
{
    const auto engine = started(captured);
    int reports = 0;
    engine->setConfigurationChanged([&] {
        EXPECT_EQ(QThread::currentThread(), QCoreApplication::instance()->thread());
        ++reports;
    });
    world->loseMicrophone();
    EXPECT_EQ(reports, 0); // only from the event loop
    EXPECT_TRUE(waitUntil([&] { return reports > 0; }));
    world->loseMicrophone();
    std::ignore = waitUntil([&] { return reports > 1; }, 300ms);
    EXPECT_EQ(reports, 1);
}

TEST_P(AudioInputContract, TheReportMayDestroyTheEngine)
{
    auto engine = started(captured);
    engine->setConfigurationChanged([&] { engine.reset(); });
    world->loseMicrophone();
    EXPECT_TRUE(waitUntil([&] { return engine == nullptr; }));
    EXPECT_TRUE(waitUntil([&] { return !world->isOpen(); }));
}

TEST_P(AudioInputContract, AfterTheStopNothingIsReported)
{
    const auto engine = started(captured);
    bool reported = false;
    engine->setConfigurationChanged([&] { reported = true; });
    world->loseMicrophone();
    engine->stop();
    std::ignore = waitUntil([&] { return reported; }, 300ms);
    EXPECT_FALSE(reported);
}

TEST_P(AudioInputContract, AMicrophoneThatStallsIsReportedOnceAndAsNoChange)
{
    const auto engine = started(captured);
    sound();
    ASSERT_TRUE(waitUntil([&] { return captured.size() > 0; }));
    int stalls = 0;
    int changes = 0;
    engine->setConfigurationChanged([&] { ++changes; });
    engine->setStalled([&] {
        EXPECT_EQ(QThread::currentThread(), QCoreApplication::instance()->thread());
        ++stalls;
    });
    world->stall();
    EXPECT_EQ(stalls, 0); // only from the event loop
    EXPECT_TRUE(waitUntil([&] { return stalls > 0; }, 10s));
    std::ignore = waitUntil([&] { return stalls + changes > 1; }, 300ms);
    EXPECT_EQ(stalls, 1);
    EXPECT_EQ(changes, 0);
    EXPECT_GT(captured.size(), 0U) << "what came before is kept";
}

TEST_P(AudioInputContract, TheReportOfAStallMayDestroyTheEngine)
{
    auto engine = started(captured);
    engine->setStalled([&] { engine.reset(); });
    world->stall();
    EXPECT_TRUE(waitUntil([&] { return engine == nullptr; }, 10s));
}

TEST_P(AudioInputContract, AfterTheStopNoStallIsReported)
{
    const auto engine = started(captured);
    bool reported = false;
    engine->setStalled([&] { reported = true; });
    world->stall();
    engine->stop();
    std::ignore = waitUntil([&] { return reported; }, 300ms);
    EXPECT_FALSE(reported);
}

TEST_P(AudioInputContract, WithoutAMicrophoneTheFormatSaysSo)
{
    world->removeAllMicrophones();
    const auto engine = world->input().makeEngine();
    EXPECT_EQ(engine->inputFormat(), AudioFormat{});
    const SystemClock clock;
    AudioRecorder recorder(world->input(), clock);
    const auto started = recorder.start();
    ASSERT_FALSE(started);
    EXPECT_EQ(started.error(), RecorderError::noInputDevice());
}

TEST_P(AudioInputContract, AStartThatFailsGivesTheReasonInTimeAndLeavesNothingOpen)
{
    const auto engine = world->input().makeEngine();
    engine->installTap(4096, captured.tap());
    world->breakStart();
    QElapsedTimer timer;
    timer.start();
    const auto started = engine->start();
    ASSERT_FALSE(started);
    EXPECT_FALSE(started.error().isEmpty());
    EXPECT_LT(timer.elapsed(), 600); // 250 ms, and room for a busy machine
    EXPECT_EQ(captured.size(), 0U);
}

namespace {

std::string nameOf(const ::testing::TestParamInfo<Backend>& backend)
{
    return backend.param.name;
}

Backend fake(AudioFormat format, const std::string& name)
{
    return {name, [format] { return makeFakeWorld(format); }};
}

Backend pulseAudio(AudioFormat format, const std::string& name,
                   const QString& samples = QStringLiteral("s16le"))
{
    return {name, [format, samples] { return makePulseAudioWorld(format, samples); }};
}

Backend pipeWire(AudioFormat format, const std::string& name)
{
    return {name, [format] { return makePipeWireWorld(format); }};
}

} // namespace

INSTANTIATE_TEST_SUITE_P(Backends, AudioInputContract,
                         ::testing::Values(fake({48000, 2}, "Fake"), pulseAudio({48000, 2}, "PulseAudio"),
                                           pipeWire({48000, 2}, "PipeWire")),
                         nameOf);

INSTANTIATE_TEST_SUITE_P(
    Hardware, AudioInputFormats,
    ::testing::Values(fake({48000, 2}, "FakeStereo48000"), fake({44100, 1}, "FakeMono44100"),
                      pulseAudio({48000, 2}, "PulseStereo48000"), pulseAudio({44100, 1}, "PulseMono44100"),
                      pulseAudio({8000, 1}, "PulseMono8000"),
                      pulseAudio({96000, 8}, "Pulse8Channels96000In24Bits", QStringLiteral("s24le")),
                      pulseAudio({192000, 1}, "PulseMono192000In32Bits", QStringLiteral("s32le")),
                      pulseAudio({48000, 2}, "PulseStereo48000InFloat", QStringLiteral("float32le")),
                      pipeWire({48000, 2}, "PipeWireStereo48000"), pipeWire({44100, 1}, "PipeWireMono44100")),
    nameOf);
