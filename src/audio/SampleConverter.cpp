#include <audio/SampleConverter.h>

#include <soxr.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <utility>

namespace tulvane {

namespace {

constexpr double lowestRate = 1000.0;
constexpr double highestRate = 6144000.0;
constexpr int mostChannels = 1024;
constexpr std::uint32_t headroom = 32;

float finite(float sample)
{
    return std::isfinite(sample) ? sample : 0.0F;
}

} // namespace

std::uint32_t outputCapacity(std::size_t frames, double ratio)
{
    const double whole = std::floor(static_cast<double>(frames) * ratio);
    if (!(whole <= static_cast<double>(std::numeric_limits<std::uint32_t>::max() - headroom)))
        qFatal("A buffer of %zu frames is too long to convert", frames);
    return static_cast<std::uint32_t>(whole) + headroom;
}

void SampleConverter::Release::operator()(soxr* resampler) const
{
    soxr_delete(resampler);
}

SampleConverter::SampleConverter(Resampler resampler, double ratio, int channels)
    : m_resampler(std::move(resampler)),
      m_ratio(ratio),
      m_channels(static_cast<std::size_t>(channels))
{
}

Result<SampleConverter, RecorderError> SampleConverter::create(double sampleRate, int channels)
{
    // Written so that a rate that is not a number fails too.
    const bool inRange = sampleRate >= lowestRate && sampleRate <= highestRate;
    if (!inRange || channels < 1 || channels > mostChannels)
        return failure(RecorderError::unsupportedFormat());

    const double ratio = recordingSampleRate / sampleRate;
    if (sampleRate == recordingSampleRate)
        return SampleConverter(nullptr, ratio, channels);
    const soxr_io_spec_t samples = soxr_io_spec(SOXR_FLOAT32_I, SOXR_FLOAT32_I);
    const soxr_quality_spec_t quality = soxr_quality_spec(SOXR_HQ, 0);
    const soxr_runtime_spec_t oneThread = soxr_runtime_spec(1);
    soxr_error_t error = nullptr;
    Resampler resampler(
        soxr_create(sampleRate, recordingSampleRate, 1, &error, &samples, &quality, &oneThread));
    if (error != nullptr || !resampler)
        return failure(RecorderError::unsupportedFormat());
    return SampleConverter(std::move(resampler), ratio, channels);
}

void SampleConverter::downmix(std::span<const float> interleaved, float* mono) const
{
    if (m_channels == 1) {
        std::ranges::transform(interleaved, mono, finite);
        return;
    }
    const float share = 1.0F / static_cast<float>(m_channels);
    for (std::size_t at = 0; at < interleaved.size(); at += m_channels) {
        float sum = 0.0F;
        for (const float sample : interleaved.subspan(at, m_channels))
            sum += sample;
        *mono++ = finite(sum * share);
    }
}

Result<void, QString> SampleConverter::convert(std::span<const float> interleaved, std::vector<float>& output)
{
    if (m_ended)
        return failure(QStringLiteral("the sound has already ended"));
    if (interleaved.size() % m_channels != 0) {
        return failure(QStringLiteral("%1 samples are no whole number of frames of %2 channels")
                           .arg(interleaved.size())
                           .arg(m_channels));
    }
    const std::size_t frames = interleaved.size() / m_channels;
    const std::uint32_t capacity = outputCapacity(frames, m_ratio);
    if (!m_resampler) {
        const std::size_t before = output.size();
        output.resize(before + frames);
        downmix(interleaved, output.data() + before);
        return {};
    }
    output.reserve(output.size() + capacity);
    m_mono.resize(frames);
    downmix(interleaved, m_mono.data());
    return resample(output);
}

Result<void, QString> SampleConverter::resample(std::vector<float>& output)
{
    const std::size_t start = output.size();
    const std::size_t capacity = outputCapacity(m_mono.size(), m_ratio);
    std::size_t taken = 0;
    std::size_t given = 0;
    // The filter gives its output in blocks, so one buffer can bring more than its own share.
    do {
        const std::size_t before = output.size();
        output.resize(before + capacity);
        std::size_t used = 0;
        const soxr_error_t error =
            soxr_process(m_resampler.get(), m_mono.data() + taken, m_mono.size() - taken, &used,
                         output.data() + before, capacity, &given);
        if (error != nullptr) {
            output.resize(start);
            return failure(QString::fromUtf8(error));
        }
        output.resize(before + given);
        taken += used;
    } while (taken < m_mono.size() || given == capacity);
    return {};
}

void SampleConverter::flush(std::vector<float>& output)
{
    if (std::exchange(m_ended, true) || !m_resampler)
        return;
    constexpr std::size_t block = 4096;
    std::size_t given = 0;
    do {
        const std::size_t before = output.size();
        output.resize(before + block);
        soxr_process(m_resampler.get(), nullptr, 0, nullptr, output.data() + before, block, &given);
        output.resize(before + given);
    } while (given > 0);
}

} // namespace tulvane
