#pragma once

#include <platform/linux/pulse/SoundClip.h>

#include <QByteArray>

#include <chrono>
#include <functional>
#include <memory>

struct pa_context;
struct pa_mainloop_api;
struct pa_operation;
struct pa_stream;
struct pa_time_event;

namespace tulvane {

/// What is to sound, and since when.
struct SoundRequest {
    std::shared_ptr<const SoundClip> clip;
    QByteArray title; ///< for people, in UTF-8
    std::chrono::steady_clock::time_point asked;

    /// A sound that comes later than half a second after its event only confuses.
    [[nodiscard]] bool isTooLate() const;
};

/// One sound on its way through the sound server: a stream that is there for this sound alone. It is given
/// up where it has not begun to sound in time. All of it with the mainloop's lock held.
class PulseSound final {
public:
    /// `over` is called at most once, when the sound has ended or failed, never from within `start`; it may
    /// destroy the sound.
    PulseSound(pa_mainloop_api* api, SoundRequest request, std::function<void(const PulseSound&)> over);
    PulseSound(const PulseSound&) = delete;
    PulseSound& operator=(const PulseSound&) = delete;
    /// A sound that is still heard breaks off.
    ~PulseSound();

    /// Whether the sound is on its way. The context must be ready.
    [[nodiscard]] bool start(pa_context* context);

private:
    void listen();
    void stateChanged();
    /// Hands the server the whole clip; from then on the sound no longer depends on this process.
    [[nodiscard]] bool send();
    void checkTime();
    void close();
    void end();

    pa_mainloop_api* m_api;
    SoundRequest m_request;
    std::function<void(const PulseSound&)> m_over;
    pa_stream* m_stream = nullptr;
    pa_operation* m_draining = nullptr;
    pa_time_event* m_timer = nullptr;
    bool m_sounds = false; ///< the server says that it has begun
    bool m_given = false;  ///< the time that a sound takes has been given it
};

} // namespace tulvane
