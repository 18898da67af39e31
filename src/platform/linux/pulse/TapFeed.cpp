#include <platform/linux/pulse/TapFeed.h>

#include <algorithm>
#include <utility>

namespace tulvane {

void TapFeed::install(std::size_t mostSamples, AudioTap tap)
{
    Q_ASSERT(mostSamples > 0);
    m_mostSamples = mostSamples;
    m_silence.assign(mostSamples, 0.0F);
    m_tap = std::move(tap);
}

void TapFeed::deliver(const void* data, std::size_t bytes) const
{
    std::size_t left = bytes / sizeof(float);
    const float* samples = static_cast<const float*>(data);
    while (m_tap && left > 0) {
        const std::size_t count = std::min(left, m_mostSamples);
        m_tap({samples != nullptr ? samples : m_silence.data(), count});
        if (samples != nullptr)
            samples += count;
        left -= count;
    }
}

} // namespace tulvane
