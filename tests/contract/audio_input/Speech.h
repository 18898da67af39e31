#pragma once

#include <support/Likeness.h>

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <numbers>
#include <span>
#include <vector>

namespace tulvane::test {

/// Something speech-like at any rate, `late` seconds after its beginning: a sweep through the band of speech
/// in four syllables a second. Its correlation with itself has one sharp peak, so that a recording of it can
/// be aligned.
[[nodiscard]] inline std::vector<float> speech(double seconds, double rate, double late = 0)
{
    std::vector<float> samples(static_cast<std::size_t>(seconds * rate));
    for (std::size_t at = 0; at < samples.size(); ++at) {
        const double time = static_cast<double>(at) / rate + late;
        const double sweep = 2 * std::numbers::pi * (200 * time + 0.5 * 2500 / seconds * time * time);
        const double syllable = 0.55 - 0.45 * std::cos(2 * std::numbers::pi * 4 * time);
        samples[at] = static_cast<float>(0.5 * syllable * std::sin(sweep));
    }
    return samples;
}

/// How alike a recording at 16,000 samples a second is to the speech of that many seconds, at the best
/// alignment, which need not be a whole number of samples.
[[nodiscard]] inline double likenessToSpeech(std::span<const float> recorded, double seconds)
{
    constexpr double rate = 16000;
    const auto ideal = speech(seconds, rate);
    double best = -1;
    std::size_t bestLag = 0;
    for (std::size_t lag = 0; lag + ideal.size() <= recorded.size(); ++lag) {
        const double rough = likeness(recorded.subspan(lag, ideal.size()), ideal, 7);
        if (rough > best) {
            best = rough;
            bestLag = lag;
        }
    }
    if (best < 0)
        return best;
    for (int eighth = -7; eighth <= 7; ++eighth) {
        const auto shifted = speech(seconds, rate, eighth / 8.0 / rate);
        best = std::max(best, likeness(recorded.subspan(bestLag, ideal.size()), shifted, 1));
    }
    return best;
}

/// From the first to the last sample that is clearly no silence, in samples.
[[nodiscard]] inline double soundingLength(std::span<const float> samples)
{
    const auto sounds = [](float sample) { return std::abs(sample) > 0.01F; };
    const auto first = std::ranges::find_if(samples, sounds);
    const auto last = std::find_if(samples.rbegin(), samples.rend(), sounds);
    return first == samples.end() ? 0 : static_cast<double>(std::distance(first, last.base()));
}

} // namespace tulvane::test
