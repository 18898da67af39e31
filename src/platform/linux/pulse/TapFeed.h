#pragma once

#include <ports/AudioEngine.h>

#include <cstddef>
#include <vector>

namespace tulvane {

/// Hands what a stream gives to a tap, in buffers of bounded size. Not synchronised.
class TapFeed final {
public:
    /// `mostSamples`, of all channels together, is above 0.
    void install(std::size_t mostSamples, AudioTap tap);
    void remove() { m_tap = nullptr; }

    /// Interleaved 32-bit floats, in whole samples. Without data it is a hole: sound that the server lost, of
    /// which only the length is known; the tap gets as much silence. Without a tap, does nothing.
    void deliver(const void* data, std::size_t bytes) const;

private:
    AudioTap m_tap;
    std::size_t m_mostSamples = 0;
    std::vector<float> m_silence;
};

} // namespace tulvane
