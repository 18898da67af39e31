#pragma once

#include <span>

namespace tulvane {

/// The loudness of some samples for a meter, 0 to 1, linear in decibels of their root mean square: -50 dBFS
/// and less is 0, full scale 1. No samples are silence. Any thread.
[[nodiscard]] float meterLevel(std::span<const float> samples);

/// The largest absolute sample in dBFS, -120 at least; no samples, or zeros alone, are -120. Any thread.
[[nodiscard]] float peakLevel(std::span<const float> samples);

} // namespace tulvane
