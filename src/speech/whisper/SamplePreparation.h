#pragma once

#include <cstddef>
#include <vector>

namespace tulvane {

inline constexpr int samplesPerSecond = 16'000;
/// 1.2 s: the library misbehaves on less than 0.1 s and recognises little in less than a second.
inline constexpr std::size_t fewestSamples = 19'200;
/// Full scale of samples that were never scaled down to 1; more is no sound.
inline constexpr float loudestSample = 32'768.0F;

/// The count as the library takes it. One that does not fit in 32 bits is a programming error and stops the
/// process.
[[nodiscard]] int librarySampleCount(std::size_t count);

/// Makes the samples fit for the library: what is no number becomes silence, what is beyond `loudestSample`
/// is lowered to it, and silence is appended up to `fewestSamples`. A single sample without these bounds
/// would turn the whole spectrogram into nothing, because it is scaled to its loudest point.
void prepareSamples(std::vector<float>& samples);

} // namespace tulvane
