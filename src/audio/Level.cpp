#include <audio/Level.h>

#include <algorithm>
#include <cmath>

namespace tulvane {

namespace {

constexpr float quietest = -120.0F;
constexpr float meterRange = 50.0F;

// In single precision on purpose: a peak that is the float nearest to -50 dBFS is -50 exactly, not a hair
// above.
float decibels(float amplitude)
{
    return 20.0F * std::log10(amplitude);
}

} // namespace

float meterLevel(std::span<const float> samples)
{
    double sum = 0;
    for (const float sample : samples)
        sum += static_cast<double>(sample) * static_cast<double>(sample);
    const auto rms =
        samples.empty() ? 0.0F : static_cast<float>(std::sqrt(sum / static_cast<double>(samples.size())));
    if (!(rms > 0.0F))
        return 0.0F;
    const float level = decibels(rms);
    // The first test is within the second; it stays as the floor that all levels here share.
    if (level < quietest || level < -meterRange)
        return 0.0F;
    return (std::min(level, 0.0F) + meterRange) / meterRange;
}

float peakLevel(std::span<const float> samples)
{
    float peak = 0.0F;
    for (const float sample : samples)
        peak = std::max(peak, std::abs(sample));
    return peak > 0.0F ? std::max(decibels(peak), quietest) : quietest;
}

} // namespace tulvane
