#include <audio/SampleBuffer.h>

#include <algorithm>
#include <utility>

namespace tulvane {

namespace {

// Kept free at the end, more than the converter holds back: adding that to a taken recording never moves the
// whole of it, so stopping stays quick however long it was.
constexpr std::size_t roomForTheEnd = 8192;

} // namespace

void SampleBuffer::reset()
{
    const std::scoped_lock guard(m_lock);
    m_samples.clear();
    m_samples.reserve(usualLength);
    m_lastLevelPublish.reset();
}

void SampleBuffer::append(std::span<const float> frames)
{
    const std::scoped_lock guard(m_lock);
    const std::size_t needed = m_samples.size() + frames.size() + roomForTheEnd;
    if (needed > m_samples.capacity())
        m_samples.reserve(std::max({usualLength, needed, 2 * m_samples.capacity()}));
    m_samples.insert(m_samples.end(), frames.begin(), frames.end());
}

bool SampleBuffer::shouldPublishLevel(std::chrono::nanoseconds now, std::chrono::nanoseconds interval)
{
    const std::scoped_lock guard(m_lock);
    if (m_lastLevelPublish && !(now - *m_lastLevelPublish > interval))
        return false;
    m_lastLevelPublish = now;
    return true;
}

std::vector<float> SampleBuffer::take()
{
    const std::scoped_lock guard(m_lock);
    return std::exchange(m_samples, {});
}

} // namespace tulvane
