#pragma once

#include <cmath>
#include <cstddef>
#include <numbers>
#include <span>
#include <vector>

namespace tulvane::test {

/// A sine of the given frequency and amplitude, `frames` frames of equal channels.
[[nodiscard]] inline std::vector<float> sine(double frequency, double rate, std::size_t frames,
                                             int channels = 1, double amplitude = 0.5)
{
    std::vector<float> samples;
    samples.reserve(frames * static_cast<std::size_t>(channels));
    for (std::size_t frame = 0; frame < frames; ++frame) {
        const double phase = 2 * std::numbers::pi * frequency * static_cast<double>(frame) / rate;
        samples.insert(samples.end(), static_cast<std::size_t>(channels),
                       static_cast<float>(amplitude * std::sin(phase)));
    }
    return samples;
}

/// Root mean square.
[[nodiscard]] inline double rmsOf(std::span<const float> samples)
{
    double sum = 0;
    for (const float sample : samples)
        sum += static_cast<double>(sample) * static_cast<double>(sample);
    return samples.empty() ? 0 : std::sqrt(sum / static_cast<double>(samples.size()));
}

} // namespace tulvane::test
