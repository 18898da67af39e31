#include <audio/Level.h>
#include <audio/RecordingTap.h>
#include <base/Log.h>

#include <algorithm>
#include <new>
#include <utility>

namespace tulvane {

using namespace std::chrono_literals;

RecordingTap::RecordingTap(std::shared_ptr<SampleBuffer> buffer, SampleConverter converter,
                           const Clock& clock)
    : m_buffer(std::move(buffer)),
      m_converter(std::move(converter)),
      m_clock(clock)
{
}

void RecordingTap::process(std::span<const float> interleaved)
{
    try {
        m_converted.clear();
        if (const auto converted = m_converter.convert(interleaved, m_converted); !converted) {
            qCCritical(lcAudio).noquote() << u"Conversion error: " + converted.error();
            return;
        }
        if (!m_converted.empty())
            append();
    } catch (const std::bad_alloc&) {
        // The next buffer may find memory again; what was recorded so far is kept.
        return;
    }
}

void RecordingTap::append()
{
    m_buffer->append(m_converted);
    if (!m_heardAnything)
        m_heardAnything = std::ranges::any_of(m_converted, [](float sample) { return sample != 0.0F; });
    if (m_buffer->shouldPublishLevel(m_clock.elapsed(), 50ms))
        Q_EMIT levelMeasured(meterLevel(m_converted));
}

void RecordingTap::finish(std::vector<float>& samples)
{
    const std::size_t before = samples.size();
    m_converter.flush(samples);
    m_heardAnything =
        m_heardAnything || std::any_of(samples.begin() + static_cast<std::ptrdiff_t>(before), samples.end(),
                                       [](float sample) { return sample != 0.0F; });
}

} // namespace tulvane
