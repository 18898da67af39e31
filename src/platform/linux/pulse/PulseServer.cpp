#include <base/Log.h>
#include <platform/linux/pulse/PulseServer.h>

#include <pulse/context.h>
#include <pulse/error.h>
#include <pulse/introspect.h>
#include <pulse/proplist.h>
#include <pulse/subscribe.h>

#include <utility>

namespace tulvane {

using namespace std::chrono_literals;

namespace {

constexpr auto connectLimit = 250ms;
constexpr auto answerLimit = 50ms;
constexpr auto reconnectDelay = 5s;
// Only another recording finds out whether it is allowed now, so a refusal must not keep one from being
// tried.
constexpr auto refusalHolds = 5s;

void forget(pa_operation* operation)
{
    if (operation != nullptr)
        pa_operation_unref(operation);
}

pa_context* makeContext(pa_mainloop_api* api)
{
    pa_proplist* const properties = pa_proplist_new();
    pa_proplist_sets(properties, PA_PROP_APPLICATION_NAME, "Tulvane");
    pa_proplist_sets(properties, PA_PROP_APPLICATION_ID, logSubsystem);
    pa_context* const context = pa_context_new_with_proplist(api, nullptr, properties);
    pa_proplist_free(properties);
    return context;
}

} // namespace

PulseServer::PulseServer(const QString& address) : m_address(address.toUtf8())
{
    m_reconnect.setSingleShot(true);
    m_reconnect.setInterval(reconnectDelay);
    connect(&m_reconnect, &QTimer::timeout, this, &PulseServer::tryAgain);
    connect(this, &PulseServer::connectionLost, this, [this] { m_reconnect.start(); }, Qt::QueuedConnection);
    const PulseLock lock(m_mainloop);
    connectContext(Autospawn::allowed);
}

PulseServer::~PulseServer()
{
    const PulseLock lock(m_mainloop);
    dropContext();
}

pa_context* PulseServer::context() const
{
    return m_state == State::lost ? nullptr : m_context;
}

std::optional<PulseSource> PulseServer::defaultSource()
{
    PulseLock lock(m_mainloop);
    if (m_state == State::lost)
        connectContext(Autospawn::allowed);
    else if (m_state == State::known)
        ask();
    const auto limit = m_state == State::known ? answerLimit : connectLimit;
    const auto answered = [this] { return m_state != State::connecting && !m_asking; };
    // A server that does not answer may still have been right the last time.
    if (!m_mainloop.waitFor(lock, limit, answered))
        qCDebug(lcAudio) << "The sound server is slow to answer";
    return m_source;
}

void PulseServer::refresh()
{
    const PulseLock lock(m_mainloop);
    if (m_state == State::known)
        ask();
}

std::optional<PulseSource> PulseServer::lastDefaultSource()
{
    const PulseLock lock(m_mainloop);
    return m_source;
}

QString PulseServer::serverName()
{
    const PulseLock lock(m_mainloop);
    return m_state == State::lost ? QString() : QString::fromUtf8(m_serverName);
}

bool PulseServer::refusesMicrophone()
{
    const PulseLock lock(m_mainloop);
    return m_isRefused ||
           (m_recordingRefused && std::chrono::steady_clock::now() - *m_recordingRefused < refusalHolds);
}

void PulseServer::noteRecording(bool isRefused)
{
    m_recordingRefused.reset();
    if (isRefused)
        m_recordingRefused = std::chrono::steady_clock::now();
}

bool PulseServer::wasRefused() const
{
    return pa_context_errno(m_context) == PA_ERR_ACCESS;
}

void PulseServer::tryAgain()
{
    const PulseLock lock(m_mainloop);
    if (m_state == State::lost)
        connectContext(Autospawn::never);
}

void PulseServer::connectContext(Autospawn autospawn)
{
    dropContext();
    m_context = makeContext(m_mainloop.api());
    m_state = State::connecting;
    pa_context_set_state_callback(
        m_context, [](pa_context*, void* self) { static_cast<PulseServer*>(self)->contextChanged(); }, this);
    const char* const address = m_address.isEmpty() ? nullptr : m_address.constData();
    const auto flags = autospawn == Autospawn::allowed ? PA_CONTEXT_NOFLAGS : PA_CONTEXT_NOAUTOSPAWN;
    // A failure that is known at once is not always told to the callback.
    if (pa_context_connect(m_context, address, flags, nullptr) < 0 && m_state != State::lost)
        contextChanged();
}

void PulseServer::dropContext()
{
    m_asking = false;
    m_askAgain = false;
    pa_context* const context = std::exchange(m_context, nullptr);
    if (context == nullptr)
        return;
    pa_context_set_state_callback(context, nullptr, nullptr);
    pa_context_set_subscribe_callback(context, nullptr, nullptr);
    pa_context_disconnect(context);
    pa_context_unref(context);
}

void PulseServer::contextChanged()
{
    const pa_context_state_t state = pa_context_get_state(m_context);
    if (state == PA_CONTEXT_READY) {
        qCDebug(lcAudio) << "Connected to the sound server";
        pa_context_set_subscribe_callback(
            m_context,
            [](pa_context*, pa_subscription_event_type_t, std::uint32_t, void* self) {
                static_cast<PulseServer*>(self)->ask();
            },
            this);
        const auto events =
            static_cast<pa_subscription_mask_t>(PA_SUBSCRIPTION_MASK_SERVER | PA_SUBSCRIPTION_MASK_SOURCE);
        m_isRefused = false;
        forget(pa_context_subscribe(m_context, events, nullptr, nullptr));
        ask();
        Q_EMIT connected();
    } else if (!PA_CONTEXT_IS_GOOD(state)) {
        qCDebug(lcAudio) << "No sound server:" << pa_strerror(pa_context_errno(m_context));
        m_isRefused = wasRefused();
        m_state = State::lost;
        m_asking = false;
        m_source.reset();
        m_mainloop.wake();
        Q_EMIT connectionLost();
    }
}

void PulseServer::ask()
{
    if (m_asking) {
        m_askAgain = true;
        return;
    }
    m_asking = true;
    m_askAgain = false;
    forget(pa_context_get_server_info(
        m_context,
        [](pa_context*, const pa_server_info* info, void* self) {
            static_cast<PulseServer*>(self)->serverAnswered(info);
        },
        this));
}

void PulseServer::serverAnswered(const pa_server_info* info)
{
    m_answer.reset();
    if (info != nullptr)
        m_serverName = QByteArray(info->server_name) + ' ' + info->server_version;
    m_defaultSink = info != nullptr ? QByteArray(info->default_sink_name) : QByteArray();
    const QByteArray name = info != nullptr ? QByteArray(info->default_source_name) : QByteArray();
    if (name.isEmpty()) {
        settle(std::nullopt);
        return;
    }
    forget(pa_context_get_source_info_by_name(
        m_context, name.constData(),
        [](pa_context*, const pa_source_info* source, int end, void* self) {
            static_cast<PulseServer*>(self)->sourceAnswered(source, end);
        },
        this));
}

void PulseServer::sourceAnswered(const pa_source_info* info, int end)
{
    if (end != 0) {
        m_isRefused = end < 0 && wasRefused();
        settle(std::exchange(m_answer, std::nullopt));
        return;
    }
    // Where there is no microphone, the server offers what the speakers play in its place.
    const bool speakers =
        info->monitor_of_sink != PA_INVALID_INDEX && m_defaultSink == info->monitor_of_sink_name;
    if (!speakers) {
        m_answer = PulseSource{info->name, QString::fromUtf8(info->description), info->sample_spec,
                               info->channel_map};
    }
}

void PulseServer::settle(std::optional<PulseSource> source)
{
    const auto nameOf = [](const auto& one) { return one ? one->name : QByteArray(); };
    const bool changed = m_state == State::known && nameOf(source) != nameOf(m_source);
    m_asking = false;
    m_source = std::move(source);
    m_state = State::known;
    m_mainloop.wake();
    if (changed)
        Q_EMIT defaultSourceChanged();
    if (m_askAgain)
        ask();
}

} // namespace tulvane
