#pragma once

#include <audio/RecorderError.h>
#include <audio/SampleBuffer.h>
#include <base/Clock.h>
#include <base/Result.h>

#include <QDateTime>
#include <QObject>

#include <functional>
#include <memory>
#include <optional>
#include <span>
#include <vector>

namespace tulvane {

class AudioEngine;
class AudioInput;
class RecordingTap;
struct AudioFormat;

/// Captures the default microphone into memory, as mono samples, 16,000 a second, and publishes a live level.
/// Nothing is ever written to disk. Main thread; the sound arrives on the input's own thread.
class AudioRecorder final : public QObject {
    Q_OBJECT

public:
    /// Both must outlive the recorder.
    AudioRecorder(AudioInput& input, const Clock& clock, QObject* parent = nullptr);
    Q_DISABLE_COPY_MOVE(AudioRecorder)
    ~AudioRecorder() override;

    /// The input level, 0 to 1, at most 20 times a second; 0 when not recording.
    [[nodiscard]] float level() const { return m_level; }
    /// From a successful start to the next stop.
    [[nodiscard]] bool isRecording() const { return m_isRecording; }
    /// When the present recording started; nullopt when not recording.
    [[nodiscard]] std::optional<QDateTime> startedAt() const { return m_startedAt; }

    /// Called on the main thread when the microphone is lost during a recording; may be empty. The recorder
    /// neither stops nor restarts by itself: the callback decides, and may call `stop`.
    void setEngineConfigurationChanged(std::function<void()> callback);
    /// Called in the same way when the microphone of a recording has delivered nothing for two seconds. What
    /// was captured until then is good.
    void setInputStalled(std::function<void()> callback);

    /// Opens the microphone; the samples of an earlier recording are gone. Does nothing while recording.
    /// Blocks until the microphone is open, 250 ms at most. After a failure nothing is recording.
    [[nodiscard]] Result<void, RecorderError> start();

    /// Closes the microphone and hands over everything captured since the start, to the last sample; nothing
    /// when not recording.
    [[nodiscard]] std::vector<float> stop();

    /// Whether the loudest sample lies strictly above `thresholdDB` (dBFS). Silence is -120 dBFS. Any thread.
    [[nodiscard]] static bool peakExceeds(std::span<const float> samples, float thresholdDB);

Q_SIGNALS:
    void levelChanged(float level);
    void isRecordingChanged(bool isRecording);
    void startedAtChanged();

private:
    [[nodiscard]] Result<std::unique_ptr<RecordingTap>, RecorderError> makeTap(const AudioFormat& format);
    void begin(const AudioFormat& format);
    void reportConfigurationChange();
    void reportStall();
    void setLevel(float level);
    void setIsRecording(bool isRecording);
    void setStartedAt(const std::optional<QDateTime>& startedAt);

    AudioInput& m_input;
    const Clock& m_clock;
    std::function<void()> m_engineConfigurationChanged;
    std::function<void()> m_inputStalled;
    std::shared_ptr<SampleBuffer> m_buffer;
    // One of each per recording. The engine calls the tap, so the tap is declared first and destroyed last.
    std::unique_ptr<RecordingTap> m_tap;
    std::unique_ptr<AudioEngine> m_engine;
    float m_level = 0;
    bool m_isRecording = false;
    std::optional<QDateTime> m_startedAt;
};

} // namespace tulvane
