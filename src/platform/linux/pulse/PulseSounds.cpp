#include <base/Log.h>
#include <base/Translate.h>
#include <platform/linux/pulse/PulseServer.h>
#include <platform/linux/pulse/PulseSounds.h>

#include <pulse/context.h>
#include <pulse/mainloop-api.h>
#include <sys/eventfd.h>
#include <unistd.h>

#include <utility>

namespace tulvane {

namespace {

/// None is louder than a quarter of full scale, so that nothing is cut off in their sum.
constexpr std::size_t mostAtOnce = 4;

} // namespace

PulseSounds::PulseSounds(std::shared_ptr<PulseServer> server)
    : m_server(std::move(server)),
      m_bell(eventfd(0, EFD_NONBLOCK | EFD_CLOEXEC))
{
    for (const QLatin1StringView name : {pop, tink, morse, basso}) {
        if (auto clip = carriedClip(name))
            m_clips.emplace(name, std::make_shared<const SoundClip>(*std::move(clip)));
    }
    if (m_bell < 0) {
        qCWarning(lcAudio) << "No descriptor is left for the sounds";
        return;
    }
    const PulseLock lock(m_server->mainloop());
    pa_mainloop_api* const api = m_server->mainloop().api();
    m_listener = api->io_new(
        api, m_bell, PA_IO_EVENT_INPUT,
        [](pa_mainloop_api*, pa_io_event*, int, pa_io_event_flags_t, void* self) {
            static_cast<PulseSounds*>(self)->heed();
        },
        this);
    // What was asked for just before the connection was there need not be lost.
    m_connected = QObject::connect(
        m_server.get(), &PulseServer::connected, m_server.get(), [this] { startAll(); },
        Qt::DirectConnection);
}

PulseSounds::~PulseSounds()
{
    {
        const PulseLock lock(m_server->mainloop());
        QObject::disconnect(m_connected);
        if (m_listener != nullptr)
            m_server->mainloop().api()->io_free(m_listener);
        m_sounding.clear();
    }
    if (m_bell >= 0)
        ::close(m_bell);
}

void PulseSounds::play(QLatin1StringView name)
{
    const auto clip = m_clips.find(name);
    if (clip != m_clips.end())
        start(clip->second);
}

void PulseSounds::playSpeech(std::shared_ptr<const std::vector<float>> samples)
{
    if (samples && !samples->empty())
        start(std::make_shared<const SoundClip>(speechClip(*samples)));
}

void PulseSounds::start(std::shared_ptr<const SoundClip> clip)
{
    if (m_bell < 0)
        return;
    SoundRequest request{std::move(clip), translate("Feedback sound").toUtf8(),
                         std::chrono::steady_clock::now()};
    {
        const std::scoped_lock guard(m_requestsLock);
        std::erase_if(m_requests, [](const SoundRequest& one) { return one.isTooLate(); });
        if (m_requests.size() >= mostAtOnce)
            return;
        m_requests.push_back(std::move(request));
    }
    // The audio thread's lock would have to be waited for: it is held while the server is being started, too.
    // A bell that is full has rung.
    if (eventfd_write(m_bell, 1) < 0)
        qCDebug(lcAudio) << "The audio thread has a sound to heed already";
}

void PulseSounds::heed()
{
    eventfd_t rung = 0;
    if (eventfd_read(m_bell, &rung) == 0)
        startAll();
}

void PulseSounds::startAll()
{
    pa_context* const context = m_server->context();
    if (context == nullptr || pa_context_get_state(context) != PA_CONTEXT_READY)
        return;
    std::vector<SoundRequest> requests;
    {
        const std::scoped_lock guard(m_requestsLock);
        requests.swap(m_requests);
    }
    for (SoundRequest& request : requests) {
        if (request.isTooLate() || m_sounding.size() >= mostAtOnce)
            continue;
        auto sound = std::make_unique<PulseSound>(
            m_server->mainloop().api(), std::move(request), [this](const PulseSound& over) {
                std::erase_if(m_sounding, [&over](const auto& one) { return one.get() == &over; });
            });
        if (sound->start(context))
            m_sounding.push_back(std::move(sound));
    }
}

} // namespace tulvane
