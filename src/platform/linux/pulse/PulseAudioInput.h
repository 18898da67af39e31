#pragma once

#include <ports/AudioInput.h>

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
    PulseAudioInput(const PulseAudioInput&) = delete;
    PulseAudioInput& operator=(const PulseAudioInput&) = delete;
    ~PulseAudioInput() override;

    /// The connection, for what else the sound server does for the program.
    [[nodiscard]] const std::shared_ptr<PulseServer>& server() const { return m_server; }

    [[nodiscard]] std::unique_ptr<AudioEngine> makeEngine() override;

private:
    std::shared_ptr<PulseServer> m_server;
};

} // namespace tulvane
