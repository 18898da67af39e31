#pragma once

#include <platform/AudioInput.h>

#include <QString>

#include <memory>

namespace tulvane {

class PulseServer;

/// The default microphone of the sound server, PulseAudio or PipeWire. Connects when made. Main thread, with
/// an event loop.
class PulseAudioInput final : public AudioInput {
public:
    /// `address` as in PULSE_SERVER; empty for the user's own server.
    explicit PulseAudioInput(const QString& address = {});
    ~PulseAudioInput() override;

    [[nodiscard]] std::unique_ptr<AudioEngine> makeEngine() override;

private:
    std::unique_ptr<PulseServer> m_server;
};

} // namespace tulvane
