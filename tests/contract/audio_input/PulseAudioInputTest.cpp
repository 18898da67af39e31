#include "Speech.h"
#include "StartTime.h"

#include <audio/AudioRecorder.h>
#include <platform/linux/pulse/PulseAudioInput.h>
#include <support/Await.h>
#include <support/LogCapture.h>
#include <support/SoundServer.h>

#include <QElapsedTimer>

#include <gmock/gmock.h>

#include <optional>

using namespace tulvane;
using namespace tulvane::test;
using namespace std::chrono_literals;

namespace {

/// A recorder over a real server, with what can happen to a real server's microphone.
class PulseAudioInputTest : public ::testing::Test {
protected:
    PulseAudioInputTest()
    {
        recorder.setEngineConfigurationChanged([this] { ++interruptions; });
        recorder.setInputStalled([this] { ++stalls; });
    }

    /// Once more, where the whole machine stood still for longer than a start may take.
    void start()
    {
        const StartTime time;
        auto started = recorder.start();
        if (!started && time.isUsedUp())
            started = recorder.start();
        ASSERT_TRUE(started) << qPrintable(started.error().description());
    }
    [[nodiscard]] bool interrupted()
    {
        return waitUntil([this] { return interruptions > 0; }, 5s);
    }
    void control(const char* command) { server.control(QString::fromLatin1(command).split(u' ')); }

    LogCapture log;
    SoundServer server;
    PulseAudioInput input{server.address()};
    SystemClock clock;
    AudioRecorder recorder{input, clock};
    int interruptions = 0;
    int stalls = 0;
};

} // namespace

TEST_F(PulseAudioInputTest, HoldsNoMicrophoneBeforeAndAfterARecording)
{
    ASSERT_EQ(input.makeEngine()->inputFormat(), (AudioFormat{48000, 2}));
    EXPECT_EQ(server.openMicrophones(), 0);
    start();
    EXPECT_EQ(server.openMicrophones(), 1);
    std::ignore = recorder.stop();
    EXPECT_TRUE(waitUntil([&] { return server.openMicrophones() == 0; }));
}

TEST_F(PulseAudioInputTest, AnotherDefaultMicrophoneIsAChange)
{
    start();
    control("set-default-source micsink.monitor");
    EXPECT_TRUE(interrupted());
    EXPECT_TRUE(recorder.isRecording());
}

TEST_F(PulseAudioInputTest, TheSameDefaultAgainIsNoChange)
{
    start();
    control("set-default-source vmic");
    control("set-source-volume vmic 80%");
    control("set-default-sink micsink");
    EXPECT_FALSE(waitUntil([this] { return interruptions > 0; }, 500ms));
}

TEST_F(PulseAudioInputTest, ARemovedMicrophoneIsAChange)
{
    start();
    control("unload-module module-remap-source");
    EXPECT_TRUE(interrupted());
    runEventLoopFor(200ms);
    EXPECT_EQ(interruptions, 1); // the stream and the default both say so
}

TEST_F(PulseAudioInputTest, ASuspendedMicrophoneIsAChange)
{
    start();
    control("suspend-source vmic 1");
    EXPECT_TRUE(interrupted());
}

TEST_F(PulseAudioInputTest, AServerThatDiesIsAChangeAndWhatWasRecordedIsKept)
{
    start();
    const auto player = server.play(speech(0.5, 48000), 48000);
    ASSERT_TRUE(waitUntil([&] { return player->state() == QProcess::NotRunning; }));
    server.kill();
    EXPECT_TRUE(interrupted());
    EXPECT_GT(recorder.stop().size(), 8000U);
}

TEST_F(PulseAudioInputTest, AServerThatHangsIsReportedAfterTwoSecondsAndWhatWasRecordedIsKept)
{
    start();
    const auto player = server.play(speech(0.5, 48000), 48000);
    ASSERT_TRUE(waitUntil([&] { return player->state() == QProcess::NotRunning; }));
    QElapsedTimer timer;
    timer.start();
    server.freeze();
    EXPECT_TRUE(waitUntil([this] { return stalls > 0; }, 5s));
    EXPECT_GT(timer.elapsed(), 1500);
    EXPECT_LT(timer.elapsed(), 3500);
    EXPECT_GT(recorder.stop().size(), 8000U);
    EXPECT_EQ(interruptions, 0);
    EXPECT_EQ(stalls, 1);
    server.thaw();
}

TEST_F(PulseAudioInputTest, ASuspendedMicrophoneDoesNotStart)
{
    control("suspend-source vmic 1");
    const auto started = recorder.start();
    ASSERT_FALSE(started);
    EXPECT_EQ(started.error(),
              RecorderError::engineStartFailed(QStringLiteral("The microphone is suspended.")));
    EXPECT_TRUE(waitUntil([&] { return server.openMicrophones() == 0; }));
}

TEST_F(PulseAudioInputTest, AServerThatAnswersTooLateOpensNothing)
{
    ASSERT_EQ(input.makeEngine()->inputFormat(), (AudioFormat{48000, 2}));
    server.freeze();
    QElapsedTimer timer;
    timer.start();
    const auto started = recorder.start();
    EXPECT_GE(timer.elapsed(), 240);
    EXPECT_LT(timer.elapsed(), 600);
    ASSERT_FALSE(started);
    EXPECT_EQ(started.error(),
              RecorderError::engineStartFailed(QStringLiteral("The sound server did not answer in time.")));
    server.thaw();
    runEventLoopFor(300ms);
    EXPECT_EQ(server.openMicrophones(), 0);
    start();
    EXPECT_EQ(server.openMicrophones(), 1);
}

TEST_F(PulseAudioInputTest, AServerThatDiesBetweenEngineAndStartSaysWhy)
{
    const auto engine = input.makeEngine();
    engine->installTap(4096, [](std::span<const float>) {});
    server.kill();
    // The death is noticed on the audio thread, a moment later.
    ASSERT_TRUE(waitUntil([&] { return !engine->start(); }));
    engine->stop();
}

TEST_F(PulseAudioInputTest, AServerThatIsGoneIsNoMicrophoneAndOneThatIsBackIsOne)
{
    start();
    std::ignore = recorder.stop();
    server.kill();
    ASSERT_TRUE(waitUntil([&] { return input.makeEngine()->inputFormat() == AudioFormat{}; }));
    const auto started = recorder.start();
    ASSERT_FALSE(started);
    EXPECT_EQ(started.error(), RecorderError::noInputDevice());
    server.start();
    start();
    const auto player = server.play(speech(0.5, 48000), 48000);
    ASSERT_TRUE(waitUntil([&] { return player->state() == QProcess::NotRunning; }));
    EXPECT_GT(recorder.stop().size(), 4000U);
}

TEST_F(PulseAudioInputTest, TheConnectionIsTakenUpAgainByItself)
{
    const auto clients = [this] {
        return server.control({QStringLiteral("list"), QStringLiteral("clients")})
            .contains(QStringLiteral("Tulvane"));
    };
    ASSERT_TRUE(waitUntil(clients));
    server.kill();
    server.start();
    EXPECT_TRUE(waitUntil(clients, 15s));
}

TEST_F(PulseAudioInputTest, WhatTheSpeakersPlayIsNoMicrophone)
{
    control("set-default-source speakers.monitor");
    ASSERT_TRUE(waitUntil([&] { return input.makeEngine()->inputFormat() == AudioFormat{}; }));
    const auto started = recorder.start();
    ASSERT_FALSE(started);
    EXPECT_EQ(started.error(), RecorderError::noInputDevice());
    // The monitor of another sink has been chosen by the user, and is one.
    control("set-default-source micsink.monitor");
    EXPECT_TRUE(waitUntil([&] { return input.makeEngine()->inputFormat() == AudioFormat{48000, 2}; }));
}

TEST_F(PulseAudioInputTest, AMutedMicrophoneIsNamedInTheLog)
{
    control("set-source-mute vmic 1");
    start();
    const auto player = server.play(speech(0.5, 48000), 48000);
    ASSERT_TRUE(waitUntil([&] { return player->state() == QProcess::NotRunning; }));
    const auto samples = recorder.stop();
    EXPECT_FALSE(AudioRecorder::peakExceeds(samples, -50));
    EXPECT_TRUE(log.contains(QStringLiteral("Every sample from “Virtual_Microphone” was zero")));
}

TEST_F(PulseAudioInputTest, LevelsFollowWhatIsPlayed)
{
    start();
    float highest = 0;
    QObject::connect(&recorder, &AudioRecorder::levelChanged, &recorder,
                     [&](float level) { highest = std::max(highest, level); });
    const auto player = server.play(speech(1, 48000), 48000);
    ASSERT_TRUE(waitUntil([&] { return player->state() == QProcess::NotRunning; }));
    EXPECT_GT(highest, 0.7F);
    EXPECT_LE(highest, 1.0F);
}

TEST(PulseAudioInputWithoutServer, IsNoMicrophoneAndSaysSoAtOnce)
{
    const ScratchFolder folder;
    PulseAudioInput input(QStringLiteral("unix:") + folder.file(QStringLiteral("none")));
    const SystemClock clock;
    AudioRecorder recorder(input, clock);
    QElapsedTimer timer;
    timer.start();
    const auto started = recorder.start();
    EXPECT_LT(timer.elapsed(), 200);
    ASSERT_FALSE(started);
    EXPECT_EQ(started.error(), RecorderError::noInputDevice());
    const auto engine = input.makeEngine();
    const auto reason = engine->start();
    ASSERT_FALSE(reason);
    EXPECT_EQ(reason.error(), QStringLiteral("The sound server is not running."));
}
