#include <platform/linux/pulse/PulseSound.h>
#include <platform/linux/pulse/UnwantedStream.h>

#include <pulse/context.h>
#include <pulse/mainloop-api.h>
#include <pulse/operation.h>
#include <pulse/proplist.h>
#include <pulse/rtclock.h>
#include <pulse/stream.h>

#include <algorithm>
#include <utility>

namespace tulvane {

using namespace std::chrono_literals;

namespace {

constexpr auto latest = 500ms;
/// Until a sound that has begun must have ended, beyond its own length: a headset may be 300 ms behind.
constexpr auto slack = 2s;
// Short, so that the first sample is heard soon, and no shorter than what a server does by itself: a shorter
// buffer would change the timing of everything else that sounds.
constexpr auto playedAhead = 60ms;
constexpr auto bufferStep = 20ms;

pa_usec_t microseconds(std::chrono::microseconds time)
{
    return static_cast<pa_usec_t>(std::max<std::chrono::microseconds::rep>(time.count(), 0));
}

pa_stream* makeStream(pa_context* context, const QByteArray& title, const pa_sample_spec& format)
{
    pa_proplist* const properties = pa_proplist_new();
    pa_proplist_sets(properties, PA_PROP_MEDIA_ROLE, "event");
    pa_stream* const stream =
        pa_stream_new_with_proplist(context, title.constData(), &format, nullptr, properties);
    pa_proplist_free(properties);
    return stream;
}

} // namespace

bool SoundRequest::isTooLate() const
{
    return std::chrono::steady_clock::now() - asked > latest;
}

PulseSound::PulseSound(pa_mainloop_api* api, SoundRequest request,
                       std::function<void(const PulseSound&)> over)
    : m_api(api),
      m_request(std::move(request)),
      m_over(std::move(over))
{
}

PulseSound::~PulseSound()
{
    close();
}

bool PulseSound::start(pa_context* context)
{
    const pa_sample_spec format{PA_SAMPLE_S16LE, m_request.clip->rate, 1};
    m_stream = makeStream(context, m_request.title, format);
    if (m_stream == nullptr)
        return false;
    listen();
    constexpr auto serversChoice = static_cast<std::uint32_t>(-1);
    const auto bytes = [&format](std::chrono::microseconds time) {
        return static_cast<std::uint32_t>(pa_usec_to_bytes(microseconds(time), &format));
    };
    const pa_buffer_attr buffering{serversChoice, bytes(playedAhead), serversChoice, bytes(bufferStep),
                                   serversChoice};
    if (pa_stream_connect_playback(m_stream, nullptr, &buffering, PA_STREAM_NOFLAGS, nullptr, nullptr) < 0)
        return false;
    const auto passed = std::chrono::steady_clock::now() - m_request.asked;
    const auto left = std::chrono::duration_cast<std::chrono::microseconds>(latest - passed);
    m_timer = pa_context_rttime_new(
        context, pa_rtclock_now() + microseconds(left),
        [](pa_mainloop_api*, pa_time_event*, const timeval*, void* self) {
            static_cast<PulseSound*>(self)->checkTime();
        },
        this);
    return true;
}

void PulseSound::listen()
{
    pa_stream_set_state_callback(
        m_stream, [](pa_stream*, void* self) { static_cast<PulseSound*>(self)->stateChanged(); }, this);
    pa_stream_set_started_callback(
        m_stream, [](pa_stream*, void* self) { static_cast<PulseSound*>(self)->m_sounds = true; }, this);
}

void PulseSound::stateChanged()
{
    const pa_stream_state_t state = pa_stream_get_state(m_stream);
    if (state == PA_STREAM_CREATING)
        return;
    if (state != PA_STREAM_READY || m_request.isTooLate() || !send())
        end();
}

bool PulseSound::send()
{
    const QByteArray& samples = m_request.clip->samples;
    const auto size = static_cast<std::size_t>(samples.size());
    if (pa_stream_write(m_stream, samples.constData(), size, nullptr, 0, PA_SEEK_RELATIVE) < 0)
        return false;
    m_draining = pa_stream_drain(
        m_stream, [](pa_stream*, int, void* self) { static_cast<PulseSound*>(self)->end(); }, this);
    return m_draining != nullptr;
}

void PulseSound::checkTime()
{
    // While the server has not opened the stream, there is nothing to close; the opening finds the request
    // too late.
    if (pa_stream_get_state(m_stream) != PA_STREAM_READY)
        return;
    if (!m_sounds || std::exchange(m_given, true)) {
        end();
        return;
    }
    pa_context_rttime_restart(pa_stream_get_context(m_stream), m_timer,
                              pa_rtclock_now() + microseconds(m_request.clip->length() + slack));
}

void PulseSound::close()
{
    if (pa_time_event* const timer = std::exchange(m_timer, nullptr))
        m_api->time_free(timer);
    if (pa_operation* const draining = std::exchange(m_draining, nullptr)) {
        pa_operation_cancel(draining);
        pa_operation_unref(draining);
    }
    pa_stream* const stream = std::exchange(m_stream, nullptr);
    if (stream == nullptr)
        return;
    pa_stream_set_state_callback(stream, nullptr, nullptr);
    pa_stream_set_started_callback(stream, nullptr, nullptr);
    const pa_stream_state_t state = pa_stream_get_state(stream);
    if (state == PA_STREAM_READY)
        pa_stream_disconnect(stream);
    else if (state == PA_STREAM_CREATING)
        pa_stream_set_state_callback(stream, &closeWhenOpen, nullptr);
    pa_stream_unref(stream);
}

void PulseSound::end()
{
    close();
    // From a copy of its own: the handler destroys this.
    const auto over = m_over;
    over(*this);
}

} // namespace tulvane
