#pragma once

#include <audio/RecorderError.h>
#include <base/Result.h>

#include <QString>

#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>
#include <vector>

struct soxr;

namespace tulvane {

/// Samples per second of everything that is recorded and recognised.
inline constexpr double recordingSampleRate = 16000.0;

/// Turns interleaved sound of one format into the recogniser's: mono, 16,000 samples a second, 32-bit float,
/// nominally -1 to 1. Streaming: however the sound is cut into buffers, the outputs put together are the same
/// to the last bit, and `round(frames * 16,000 / rate)` samples long once flushed.
///
/// The channels are averaged: speech keeps its level whichever number of channels carries it, cannot clip,
/// and is not lost when it sits on another channel than the first. A sample that is not a finite number
/// counts as silence, since one of them would otherwise spoil all the sound that shares the filter with it.
///
/// One thread at a time; the calls may move between threads.
class SampleConverter final {
public:
    /// Fails with `unsupportedFormat` outside 1 kHz to 6.144 MHz and 1 to 1,024 channels.
    [[nodiscard]] static Result<SampleConverter, RecorderError> create(double sampleRate, int channels);

    /// Appends to `output` what the filter gives for these frames; it keeps about 50 ms back. Fails, with
    /// words for the log and nothing appended, when the samples are no whole number of frames, and after
    /// `flush`. More frames in one call than 32 bits can count after conversion end the process.
    // NOLINTNEXTLINE(modernize-use-nodiscard): files of whole frames cannot fail here
    Result<void, QString> convert(std::span<const float> interleaved, std::vector<float>& output);

    /// Appends what the filter still holds. The sound is at its end then.
    void flush(std::vector<float>& output);

private:
    struct Release {
        void operator()(soxr* resampler) const;
    };
    using Resampler = std::unique_ptr<soxr, Release>;

    SampleConverter(Resampler resampler, double ratio, int channels);
    void downmix(std::span<const float> interleaved, float* mono) const;
    [[nodiscard]] Result<void, QString> resample(std::vector<float>& output);

    Resampler m_resampler; ///< null where the rate is already right
    double m_ratio;        ///< output samples per input frame
    std::size_t m_channels;
    bool m_ended = false;
    std::vector<float> m_mono; ///< the downmixed buffer, kept for its memory
};

/// How many samples a buffer of `frames` can give: frames * ratio, the fraction dropped, and 32 of headroom.
/// Ends the process where that exceeds 32 bits: no caller has such a buffer.
[[nodiscard]] std::uint32_t outputCapacity(std::size_t frames, double ratio);

} // namespace tulvane
