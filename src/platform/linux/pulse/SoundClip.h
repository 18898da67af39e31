#pragma once

#include <QByteArray>
#include <QLatin1StringView>

#include <chrono>
#include <cstdint>
#include <optional>

namespace tulvane {

/// A short sound in memory.
struct SoundClip {
    static constexpr std::uint32_t rate = 48000; ///< samples a second

    QByteArray samples; ///< mono, 16 bits each, the low byte first

    /// Rounded up.
    [[nodiscard]] std::chrono::milliseconds length() const;
};

/// One of the sounds that the program carries, by the names of the port `Sounds`; nullopt for any other.
[[nodiscard]] std::optional<SoundClip> carriedClip(QLatin1StringView name);

} // namespace tulvane
