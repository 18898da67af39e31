#include "RecorderFixture.h"

#include <thread>

using namespace tulvane;
using namespace tulvane::test;

namespace {

/// The real clock, since the audio thread reads it.
class RecorderThreads : public ::testing::Test {
protected:
    FakeAudioInput input;
    SystemClock clock;
    LogCapture log;
    AudioRecorder recorder{input, clock};
};

} // namespace

TEST_F(RecorderThreads, HalfAnHourIsCapturedWhole)
{
    input.setFormat({16000, 1});
    ASSERT_TRUE(recorder.start());
    constexpr std::size_t second = 16000;
    constexpr std::size_t seconds = 30 * 60;
    std::jthread audio([&] {
        std::vector<float> block(second);
        for (std::size_t at = 0; at < seconds; ++at) {
            for (std::size_t frame = 0; frame < second; ++frame)
                block[frame] = static_cast<float>((at * second + frame) % 65521) / 65536.0F;
            input.push(block, 320);
        }
    });
    audio.join();
    const auto samples = recorder.stop();
    ASSERT_EQ(samples.size(), seconds * second);
    for (std::size_t at = 0; at < samples.size(); ++at) {
        if (samples[at] != static_cast<float>(at % 65521) / 65536.0F)
            FAIL() << "sample " << at << " is another";
    }
}

TEST_F(RecorderThreads, HalfAnHourFromAnotherRateHasItsExactLength)
{
    input.setFormat({48000, 1});
    ASSERT_TRUE(recorder.start());
    const auto second = sine(440, 48000, 48000);
    std::jthread audio([&] {
        for (int at = 0; at < 30 * 60; ++at)
            input.push(second);
    });
    audio.join();
    EXPECT_EQ(recorder.stop().size(), 30U * 60U * 16000U);
}

TEST_F(RecorderThreads, LevelsReachTheMainThreadWhileSoundArrives)
{
    input.setFormat({48000, 1});
    ASSERT_TRUE(recorder.start());
    int levels = 0;
    QObject::connect(&recorder, &AudioRecorder::levelChanged, &recorder, [&](float level) {
        EXPECT_EQ(QThread::currentThread(), QCoreApplication::instance()->thread());
        EXPECT_GE(level, 0.0F);
        EXPECT_LE(level, 1.0F);
        ++levels;
    });
    std::jthread audio([&](const std::stop_token& stop) {
        for (int at = 0; !stop.stop_requested(); ++at) {
            input.push(sine(440, 48000, 960, 1, at % 2 == 0 ? 0.5 : 0.1));
            std::this_thread::sleep_for(std::chrono::milliseconds(3));
        }
    });
    EXPECT_TRUE(waitUntil([&] { return levels >= 3; }));
    EXPECT_FALSE(recorder.stop().empty());
    EXPECT_EQ(recorder.level(), 0.0F);
}

TEST_F(RecorderThreads, ManyStopsAndStartsAgainstALiveMicrophone)
{
    input.setFormat({44100, 2});
    std::jthread audio([&](const std::stop_token& stop) {
        const auto sound = sine(440, 44100, 882, 2);
        while (!stop.stop_requested()) {
            input.push(sound);
            std::this_thread::sleep_for(std::chrono::microseconds(500)); // lets the other side at the lock
        }
    });
    for (int round = 0; round < 50; ++round) {
        ASSERT_TRUE(recorder.start());
        ASSERT_TRUE(waitUntil([&] { return recorder.level() > 0; }));
        EXPECT_FALSE(recorder.stop().empty());
        EXPECT_EQ(recorder.level(), 0.0F);
    }
}
