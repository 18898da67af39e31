#pragma once

#include <chrono>
#include <cstddef>
#include <mutex>
#include <optional>
#include <span>
#include <vector>

namespace tulvane {

/// The samples of a recording so far: all that the audio thread and the main thread share. Any thread; each
/// call holds the lock briefly.
class SampleBuffer final {
public:
    /// Samples that fit without moving the earlier ones: five minutes.
    static constexpr std::size_t usualLength = 300 * 16000;

    /// Empties the buffer, keeping its memory and making room for `usualLength`, so that an ordinary
    /// dictation never allocates on the audio thread. The next level may be published at once.
    void reset();

    void append(std::span<const float> frames);

    /// Whether more than `interval` has passed since this last answered true; if so, `now` is remembered.
    /// `now` is a time that does not go back, as Clock::elapsed: a wall clock set back would freeze the
    /// level.
    [[nodiscard]] bool shouldPublishLevel(std::chrono::nanoseconds now, std::chrono::nanoseconds interval);

    /// Hands the samples over without copying them, and leaves the buffer empty.
    [[nodiscard]] std::vector<float> take();

private:
    std::mutex m_lock;
    std::vector<float> m_samples;
    std::optional<std::chrono::nanoseconds> m_lastLevelPublish; ///< nullopt is the distant past
};

} // namespace tulvane
