#include <base/Log.h>
#include <base/Translate.h>
#include <platform/linux/pulse/Fragments.h>
#include <platform/linux/pulse/PulseCapture.h>
#include <platform/linux/pulse/UnwantedStream.h>

#include <pulse/context.h>
#include <pulse/error.h>
#include <pulse/stream.h>

#include <utility>

namespace tulvane {

using namespace std::chrono_literals;

namespace {

constexpr auto openLimit = 250ms;
constexpr auto silenceLimit = 2s;
constexpr auto watchInterval = 500ms;
constexpr auto fragmentLength = 20ms;

struct Fragments {
    pa_stream* stream;

    [[nodiscard]] std::size_t readableSize() const { return pa_stream_readable_size(stream); }
    bool peek(const void** data, std::size_t* bytes) const
    {
        return pa_stream_peek(stream, data, bytes) >= 0;
    }
    void drop() const { pa_stream_drop(stream); }
};

QString refusal()
{
    return translate("The sound server refuses access to the microphone.") + u' ' +
           translate("Allow Tulvane to record in your desktop's sound or privacy settings.");
}

} // namespace

PulseCapture::PulseCapture(PulseServer& server, std::optional<PulseSource> source)
    : m_server(server),
      m_source(std::move(source))
{
    connect(this, &PulseCapture::streamLost, this, &PulseCapture::reportLoss, Qt::QueuedConnection);
    connect(&server, &PulseServer::defaultSourceChanged, this, &PulseCapture::checkDefault,
            Qt::QueuedConnection);
    m_watchdog.setInterval(watchInterval);
    connect(&m_watchdog, &QTimer::timeout, this, &PulseCapture::keepWatch);
}

PulseCapture::~PulseCapture()
{
    stop();
}

AudioFormat PulseCapture::inputFormat() const
{
    if (!m_source)
        return {};
    return {static_cast<double>(m_source->hardware.rate), m_source->hardware.channels};
}

QString PulseCapture::deviceName() const
{
    return m_source ? m_source->description : QString();
}

void PulseCapture::installTap(std::uint32_t mostFrames, AudioTap tap)
{
    const PulseLock lock(m_server.mainloop());
    m_feed.install(std::size_t{mostFrames} * (m_source ? m_source->hardware.channels : 1U), std::move(tap));
}

void PulseCapture::removeTap()
{
    const PulseLock lock(m_server.mainloop());
    m_feed.remove();
}

void PulseCapture::setConfigurationChanged(std::function<void()> changed)
{
    m_changed = std::move(changed);
}

void PulseCapture::setStalled(std::function<void()> stalled)
{
    m_stalled = std::move(stalled);
}

Result<void, QString> PulseCapture::start()
{
    PulseLock lock(m_server.mainloop());
    pa_context* const context = m_server.context();
    if (context == nullptr || !m_source) {
        lock.unlock();
        return failure(m_server.refusesMicrophone() ? refusal()
                                                    : translate("The sound server is not running."));
    }
    m_lastSound = std::chrono::steady_clock::now();
    if (!openStream(context))
        return failure(QString::fromUtf8(pa_strerror(pa_context_errno(context))));
    if (auto opened = waitUntilOpen(lock); !opened) {
        closeStream();
        return opened;
    }
    lock.unlock();
    m_running = true;
    m_watchdog.start();
    // The default may have changed between the making of this engine and now.
    QTimer::singleShot(0, this, &PulseCapture::checkDefault);
    return {};
}

bool PulseCapture::openStream(pa_context* context)
{
    pa_sample_spec format = m_source->hardware;
    format.format = PA_SAMPLE_FLOAT32NE;
    m_stream =
        pa_stream_new(context, translate("Dictation").toUtf8().constData(), &format, &m_source->channels);
    if (m_stream == nullptr)
        return false;
    listen();
    constexpr auto serversChoice = static_cast<std::uint32_t>(-1);
    const auto fragment = pa_usec_to_bytes(std::chrono::microseconds(fragmentLength).count(), &format);
    const pa_buffer_attr buffering{serversChoice, serversChoice, serversChoice, serversChoice,
                                   static_cast<std::uint32_t>(fragment)};
    const auto flags = static_cast<pa_stream_flags_t>(PA_STREAM_DONT_MOVE | PA_STREAM_ADJUST_LATENCY);
    if (pa_stream_connect_record(m_stream, m_source->name.constData(), &buffering, flags) < 0) {
        closeStream();
        return false;
    }
    return true;
}

void PulseCapture::listen()
{
    const auto changed = [](pa_stream*, void* self) { static_cast<PulseCapture*>(self)->streamChanged(); };
    pa_stream_set_state_callback(m_stream, changed, this);
    pa_stream_set_suspended_callback(m_stream, changed, this);
    pa_stream_set_moved_callback(
        m_stream, [](pa_stream*, void* self) { Q_EMIT static_cast<PulseCapture*>(self)->streamLost(); },
        this);
    pa_stream_set_read_callback(
        m_stream, [](pa_stream*, std::size_t, void* self) { static_cast<PulseCapture*>(self)->read(); },
        this);
}

Result<void, QString> PulseCapture::waitUntilOpen(PulseLock& lock)
{
    const auto settled = [this] { return pa_stream_get_state(m_stream) != PA_STREAM_CREATING; };
    if (!m_server.mainloop().waitFor(lock, openLimit, settled))
        return failure(translate("The sound server did not answer in time."));
    const bool isOpen = pa_stream_get_state(m_stream) == PA_STREAM_READY;
    const int error = isOpen ? PA_OK : pa_context_errno(pa_stream_get_context(m_stream));
    m_server.noteRecording(error == PA_ERR_ACCESS);
    if (!isOpen)
        return failure(error == PA_ERR_ACCESS ? refusal() : QString::fromUtf8(pa_strerror(error)));
    if (pa_stream_is_suspended(m_stream) > 0)
        return failure(translate("The microphone is suspended."));
    return {};
}

void PulseCapture::stop()
{
    m_running = false;
    m_watchdog.stop();
    const PulseLock lock(m_server.mainloop());
    closeStream();
}

void PulseCapture::closeStream()
{
    pa_stream* const stream = std::exchange(m_stream, nullptr);
    if (stream == nullptr)
        return;
    pa_stream_set_state_callback(stream, nullptr, nullptr);
    pa_stream_set_suspended_callback(stream, nullptr, nullptr);
    pa_stream_set_moved_callback(stream, nullptr, nullptr);
    pa_stream_set_read_callback(stream, nullptr, nullptr);
    const pa_stream_state_t state = pa_stream_get_state(stream);
    if (state == PA_STREAM_READY)
        pa_stream_disconnect(stream);
    else if (state == PA_STREAM_CREATING)
        pa_stream_set_state_callback(stream, &closeWhenOpen, nullptr);
    pa_stream_unref(stream);
}

void PulseCapture::streamChanged()
{
    m_server.mainloop().wake();
    const pa_stream_state_t state = pa_stream_get_state(m_stream);
    const bool suspended = state == PA_STREAM_READY && pa_stream_is_suspended(m_stream) > 0;
    if (suspended || state == PA_STREAM_FAILED || state == PA_STREAM_TERMINATED)
        Q_EMIT streamLost();
}

void PulseCapture::read()
{
    m_lastSound = std::chrono::steady_clock::now();
    takeFragments(Fragments{m_stream},
                  [this](const void* data, std::size_t bytes) { m_feed.deliver(data, bytes); });
}

void PulseCapture::checkDefault()
{
    if (!m_running)
        return;
    const auto source = m_server.lastDefaultSource();
    if (!source || source->name != m_source->name)
        reportLoss();
}

void PulseCapture::keepWatch()
{
    // PipeWire now and then changes the default without announcing it.
    m_server.refresh();
    if (std::chrono::steady_clock::now() - m_lastSound.load() > silenceLimit)
        report(m_stalled);
}

void PulseCapture::reportLoss()
{
    report(m_changed);
}

void PulseCapture::report(const std::function<void()>& handler)
{
    if (!std::exchange(m_running, false))
        return;
    m_watchdog.stop();
    // From a copy of its own: the handler may destroy this engine.
    if (const auto called = handler)
        called();
}

} // namespace tulvane
