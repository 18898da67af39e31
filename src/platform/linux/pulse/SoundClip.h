#pragma once

#include <QByteArray>
#include <QLatin1StringView>

#include <chrono>
#include <cstdint>
#include <optional>
#include <span>

namespace tulvane {

/// A short sound in memory.
struct SoundClip {
    QByteArray samples;         ///< mono, 16 bits each, the low byte first
    std::uint32_t rate = 48000; ///< samples a second

    /// Rounded up.
    [[nodiscard]] std::chrono::milliseconds length() const;
};

/// Speech as the port `Sounds` takes it; what is beyond full scale is cut off.
[[nodiscard]] SoundClip speechClip(std::span<const float> samples);

/// One of the sounds that the program carries, by the names of the port `Sounds`; nullopt for any other.
[[nodiscard]] std::optional<SoundClip> carriedClip(QLatin1StringView name);

} // namespace tulvane
