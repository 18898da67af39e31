#pragma once

#include <audio/SampleBuffer.h>
#include <audio/SampleConverter.h>
#include <base/Clock.h>

#include <QObject>

#include <memory>
#include <span>
#include <vector>

namespace tulvane {

/// What happens to every captured buffer of one recording: converted, appended, now and then metered. It
/// knows no recorder, so one that is gone is simply not told. Made and destroyed on the main thread.
class RecordingTap final : public QObject {
    Q_OBJECT

public:
    RecordingTap(std::shared_ptr<SampleBuffer> buffer, SampleConverter converter, const Clock& clock);

    /// On the audio thread. A buffer that cannot be converted is logged and dropped, one for which there is
    /// no memory is dropped; the recording goes on.
    void process(std::span<const float> interleaved);

    /// Adds what the converter still holds. Once the audio thread is done with this.
    void finish(std::vector<float>& samples);

    /// Whether any sample was not exactly zero: a microphone that is muted or broken gives zeros alone, a
    /// quiet room does not. Once the audio thread is done with this.
    [[nodiscard]] bool heardAnything() const { return m_heardAnything; }

Q_SIGNALS:
    /// A meter level, 0 to 1, more than 0.05 s after the one before. On the audio thread: connect it queued.
    void levelMeasured(float level);

private:
    void append();

    std::shared_ptr<SampleBuffer> m_buffer;
    SampleConverter m_converter;
    const Clock& m_clock;
    std::vector<float> m_converted; ///< the buffer at hand, kept for its memory
    bool m_heardAnything = false;
};

} // namespace tulvane
