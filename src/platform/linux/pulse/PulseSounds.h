#pragma once

#include <platform/linux/pulse/PulseSound.h>
#include <ports/Sounds.h>

#include <QMetaObject>

#include <map>
#include <memory>
#include <mutex>
#include <vector>

struct pa_io_event;

namespace tulvane {

class PulseServer;

/// The sounds that the program carries, on the default speakers of the sound server. Up to four sound at
/// once; what comes on top of those, or could only be heard half a second after it was asked for, is dropped.
/// Opens a stream for each sound and nothing else, least of all a microphone. Main thread, which never waits
/// here: the audio thread does the work.
class PulseSounds final : public Sounds {
public:
    explicit PulseSounds(std::shared_ptr<PulseServer> server);
    PulseSounds(const PulseSounds&) = delete;
    PulseSounds& operator=(const PulseSounds&) = delete;
    /// Waits for the audio thread to finish what it is at.
    ~PulseSounds() override;

    void play(QLatin1StringView name) override;
    void playSpeech(std::shared_ptr<const std::vector<float>> samples) override;

private:
    void start(std::shared_ptr<const SoundClip> clip);
    // On the audio thread, with its lock held.
    void heed();
    void startAll();

    const std::shared_ptr<PulseServer> m_server;
    std::map<QLatin1StringView, std::shared_ptr<const SoundClip>> m_clips;
    QMetaObject::Connection m_connected;
    int m_bell =
        -1; ///< the descriptor that wakes the audio thread; -1 where the process may have no more of them
    pa_io_event* m_listener = nullptr;

    std::mutex m_requestsLock; ///< held for moments only, unlike the audio thread's
    std::vector<SoundRequest> m_requests;

    std::vector<std::unique_ptr<PulseSound>> m_sounding; ///< guarded by the audio thread's lock
};

} // namespace tulvane
