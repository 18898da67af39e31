#include "Ear.h"
#include "SoundsWorld.h"

#include <platform/linux/pulse/PulseAudioInput.h>
#include <platform/linux/pulse/PulseSounds.h>

namespace tulvane::test {

namespace {

class ServerWorld final : public SoundsWorld {
public:
    explicit ServerWorld(SoundServer::Kind kind) : m_server(kind) {}

    [[nodiscard]] Sounds& sounds() override { return m_sounds; }
    [[nodiscard]] QStringList heard() override { return m_ear.heard(); }
    // One recording is the ear's.
    [[nodiscard]] bool isMicrophoneOpen() const override { return m_server.openMicrophones() > 1; }

private:
    SoundServer m_server;
    Ear m_ear{m_server};
    PulseAudioInput m_input{m_server.address()};
    PulseSounds m_sounds{m_input.server()};
};

} // namespace

std::unique_ptr<SoundsWorld> makePulseAudioWorld()
{
    return std::make_unique<ServerWorld>(SoundServer::Kind::pulseAudio);
}

std::unique_ptr<SoundsWorld> makePipeWireWorld()
{
    return std::make_unique<ServerWorld>(SoundServer::Kind::pipeWire);
}

} // namespace tulvane::test
