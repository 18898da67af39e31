#include <audio/AudioRecorder.h>
#include <audio/Level.h>
#include <audio/RecordingTap.h>
#include <audio/SampleConverter.h>
#include <base/Log.h>
#include <ports/AudioInput.h>

#include <utility>

namespace tulvane {

namespace {

constexpr std::uint32_t framesPerBuffer = 4096;
constexpr double shortestTelling = 0.4; // seconds

} // namespace

AudioRecorder::AudioRecorder(AudioInput& input, const Clock& clock, QObject* parent)
    : QObject(parent),
      m_input(input),
      m_clock(clock),
      m_buffer(std::make_shared<SampleBuffer>())
{
}

AudioRecorder::~AudioRecorder() = default;

void AudioRecorder::setEngineConfigurationChanged(std::function<void()> callback)
{
    m_engineConfigurationChanged = std::move(callback);
}

void AudioRecorder::setInputStalled(std::function<void()> callback)
{
    m_inputStalled = std::move(callback);
}

Result<std::unique_ptr<RecordingTap>, RecorderError> AudioRecorder::makeTap(const AudioFormat& format)
{
    auto converter = SampleConverter::create(format.sampleRate, format.channels);
    if (!converter)
        return failure(converter.error());
    auto tap = std::make_unique<RecordingTap>(m_buffer, std::move(*converter), m_clock);
    // The tap receives its own signal: what is still queued when a recording ends is dropped with it, and no
    // late level shows up in the next one.
    connect(
        tap.get(), &RecordingTap::levelMeasured, tap.get(), [this](float level) { setLevel(level); },
        Qt::QueuedConnection);
    return tap;
}

Result<void, RecorderError> AudioRecorder::start()
{
    if (m_isRecording)
        return {};
    std::unique_ptr<AudioEngine> engine = m_input.makeEngine();
    const AudioFormat format = engine->inputFormat();
    if (!(format.sampleRate > 0) || format.channels <= 0)
        return failure(RecorderError::noInputDevice());
    auto tap = makeTap(format);
    if (!tap)
        return failure(tap.error());

    m_buffer->reset();
    engine->installTap(framesPerBuffer,
                       [tap = tap->get()](std::span<const float> frames) { tap->process(frames); });
    if (const auto started = engine->start(); !started) {
        engine->removeTap();
        return failure(RecorderError::engineStartFailed(started.error()));
    }
    m_tap = std::move(*tap);
    m_engine = std::move(engine);
    begin(format);
    return {};
}

void AudioRecorder::begin(const AudioFormat& format)
{
    m_engine->setConfigurationChanged([this] { reportConfigurationChange(); });
    m_engine->setStalled([this] { reportStall(); });
    qCInfo(lcAudio).noquote() << QStringLiteral("Recording started (%1 Hz, %2 ch → 16 kHz mono)")
                                     .arg(format.sampleRate, 0, 'f', 0)
                                     .arg(format.channels);
    setLevel(0);
    setStartedAt(m_clock.now());
    setIsRecording(true);
}

void AudioRecorder::reportConfigurationChange()
{
    qCCritical(lcAudio) << "Audio engine configuration changed while recording";
    // From a copy of its own: the callback may set another.
    if (const auto callback = m_engineConfigurationChanged)
        callback();
}

void AudioRecorder::reportStall()
{
    qCCritical(lcAudio) << "The microphone stopped delivering sound while recording";
    if (const auto callback = m_inputStalled)
        callback();
}

std::vector<float> AudioRecorder::stop()
{
    if (!m_isRecording || !m_engine)
        return {};
    m_engine->removeTap();
    m_engine->stop();
    const QString device = m_engine->deviceName();
    m_engine.reset();

    std::vector<float> samples = m_buffer->take();
    m_tap->finish(samples);
    const double seconds = static_cast<double>(samples.size()) / recordingSampleRate;
    // A microphone that has just been opened begins with silence: a short recording says nothing of it.
    const bool silent = seconds >= shortestTelling && !m_tap->heardAnything();
    m_tap.reset();
    qCInfo(lcAudio).noquote() << QStringLiteral("Recording stopped: %1s").arg(seconds, 0, 'f', 1);
    if (silent)
        qCCritical(lcAudio).noquote() << u"Every sample from “" + device + u"” was zero";
    setIsRecording(false);
    setLevel(0);
    setStartedAt(std::nullopt);
    return samples;
}

bool AudioRecorder::peakExceeds(std::span<const float> samples, float thresholdDB)
{
    return peakLevel(samples) > thresholdDB;
}

void AudioRecorder::setLevel(float level)
{
    if (std::exchange(m_level, level) != level)
        Q_EMIT levelChanged(level);
}

void AudioRecorder::setIsRecording(bool isRecording)
{
    if (std::exchange(m_isRecording, isRecording) != isRecording)
        Q_EMIT isRecordingChanged(isRecording);
}

void AudioRecorder::setStartedAt(const std::optional<QDateTime>& startedAt)
{
    if (std::exchange(m_startedAt, startedAt) != startedAt)
        Q_EMIT startedAtChanged();
}

} // namespace tulvane
