#pragma once

#include <QByteArray>
#include <QLatin1StringView>

#include <chrono>
#include <cstdint>
#include <optional>

namespace tulvane {

/// A short sound in memory.
struct SoundClip {
    std::uint32_t rate = 0; ///< samples a second
    QByteArray samples;     ///< mono, 16 bits each, the low byte first

    /// Rounded up.
    [[nodiscard]] std::chrono::milliseconds length() const;
};

/// The sound in a WAV file. nullopt where that is damaged or of another kind than mono in 16 bits.
[[nodiscard]] std::optional<SoundClip> clipFromWave(const QByteArray& file);

/// One of the sounds that the program carries, by the names of the port `Sounds`; nullopt for any other.
[[nodiscard]] std::optional<SoundClip> carriedClip(QLatin1StringView name);

} // namespace tulvane
