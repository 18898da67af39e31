// How fast a recording begins and ends: on a real sound server with a virtual microphone, and for the longest
// recording over a scripted one. Also what the conversion of the sound costs.
#include <audio/AudioRecorder.h>
#include <audio/SampleConverter.h>
#include <base/Clock.h>
#include <platform/fake/FakeAudioInput.h>
#include <platform/linux/pulse/PulseAudioInput.h>
#include <support/Await.h>
#include <support/SoundServer.h>

#include <QCoreApplication>

#include <algorithm>
#include <atomic>
#include <chrono>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <vector>

namespace {

using namespace tulvane;
using Moment = std::chrono::steady_clock::time_point;

Moment now()
{
    return std::chrono::steady_clock::now();
}

double millisecondsSince(Moment start)
{
    return std::chrono::duration<double, std::milli>(now() - start).count();
}

/// Notes when the tap of an engine is first called, and passes everything on.
class TimedEngine final : public AudioEngine {
public:
    TimedEngine(std::unique_ptr<AudioEngine> engine, std::atomic<Moment>& first)
        : m_engine(std::move(engine)),
          m_first(first)
    {
    }
    [[nodiscard]] AudioFormat inputFormat() const override { return m_engine->inputFormat(); }
    [[nodiscard]] QString deviceName() const override { return m_engine->deviceName(); }
    void installTap(std::uint32_t mostFrames, AudioTap tap) override
    {
        m_engine->installTap(mostFrames, [this, tap = std::move(tap)](std::span<const float> samples) {
            tap(samples);
            if (m_first.load() == Moment())
                m_first = now();
        });
    }
    void removeTap() override { m_engine->removeTap(); }
    [[nodiscard]] Result<void, QString> start() override { return m_engine->start(); }
    void stop() override { m_engine->stop(); }
    void setConfigurationChanged(std::function<void()> changed) override
    {
        m_engine->setConfigurationChanged(std::move(changed));
    }
    void setStalled(std::function<void()> stalled) override { m_engine->setStalled(std::move(stalled)); }

private:
    std::unique_ptr<AudioEngine> m_engine;
    std::atomic<Moment>& m_first;
};

class TimedInput final : public AudioInput {
public:
    explicit TimedInput(AudioInput& input) : m_input(input) {}
    [[nodiscard]] std::unique_ptr<AudioEngine> makeEngine() override
    {
        return std::make_unique<TimedEngine>(m_input.makeEngine(), first);
    }

    std::atomic<Moment> first = Moment();

private:
    AudioInput& m_input;
};

double percentile(std::vector<double> values, double share)
{
    std::sort(values.begin(), values.end());
    const auto rank = static_cast<std::size_t>(std::ceil(share * static_cast<double>(values.size())));
    return values.at(std::max<std::size_t>(rank, 1) - 1);
}

void fail(const char* what)
{
    std::fprintf(stderr, "bench_recorder: %s\n", what);
    std::exit(1);
}

void timeStarts(int rounds)
{
    const test::SoundServer server;
    PulseAudioInput pulse(server.address());
    TimedInput input(pulse);
    const SystemClock clock;
    AudioRecorder recorder(input, clock);
    // The connection is made in advance, as it is in the running program.
    if (!test::waitUntil([&] { return pulse.makeEngine()->inputFormat().channels > 0; }))
        fail("no virtual microphone");
    std::vector<double> untilSample;
    std::vector<double> calls;
    for (int i = 0; i < rounds; ++i) {
        input.first = Moment();
        const Moment start = now();
        if (!recorder.start())
            fail("the recording did not start");
        calls.push_back(millisecondsSince(start));
        if (!test::waitUntil([&] { return input.first.load() != Moment(); }))
            fail("no sound came");
        untilSample.push_back(std::chrono::duration<double, std::milli>(input.first.load() - start).count());
        static_cast<void>(recorder.stop());
    }
    std::printf("| start() to the first sample, virtual microphone, %d starts | p50 %.1f ms, p95 %.1f ms "
                "(the call itself: p50 %.1f ms, p95 %.1f ms) |\n",
                rounds, percentile(untilSample, 0.5), percentile(untilSample, 0.95), percentile(calls, 0.5),
                percentile(calls, 0.95));
}

std::vector<float> stereoSecond()
{
    std::vector<float> samples;
    for (int i = 0; i < 48000; ++i) {
        const auto value = static_cast<float>(0.3 * std::sin(i * 0.05) + 0.1 * std::sin(i * 0.013));
        samples.insert(samples.end(), {value, value});
    }
    return samples;
}

void timeConversion()
{
    const std::vector<float> second = stereoSecond();
    auto converter = SampleConverter::create(48000, 2);
    std::vector<float> output;
    output.reserve(61 * 16000);
    constexpr std::size_t buffer = 2 * 960;
    const Moment start = now();
    for (int i = 0; i < 60; ++i) {
        for (std::size_t at = 0; at < second.size(); at += buffer)
            static_cast<void>(converter->convert(std::span(second).subspan(at, buffer), output));
    }
    converter->flush(output);
    std::printf("| conversion of a minute, 48 kHz stereo in buffers of 20 ms | %.1f ms |\n",
                millisecondsSince(start));
}

void timeLongStop()
{
    FakeAudioInput input;
    input.setFormat({48000, 2});
    const SystemClock clock;
    AudioRecorder recorder(input, clock);
    if (!recorder.start())
        fail("the scripted recording did not start");
    const std::vector<float> second = stereoSecond();
    for (int i = 0; i < 30 * 60; ++i)
        input.push(second);
    const Moment start = now();
    const std::vector<float> samples = recorder.stop();
    std::printf("| stop() to samples in hand, 30 minutes | %.2f ms (%zu samples) |\n",
                millisecondsSince(start), samples.size());
}

} // namespace

int main(int argc, char** argv)
{
    const QCoreApplication app(argc, argv);
    std::printf("| what | figure |\n|---|---|\n");
    timeStarts(argc > 1 ? std::atoi(argv[1]) : 100);
    timeConversion();
    timeLongStop();
    return 0;
}
