#include <platform/linux/pulse/PulseAudioInput.h>
#include <platform/linux/pulse/PulseCapture.h>
#include <platform/linux/pulse/PulseServer.h>

namespace tulvane {

PulseAudioInput::PulseAudioInput(const QString& address) : m_server(std::make_shared<PulseServer>(address)) {}

PulseAudioInput::~PulseAudioInput() = default;

std::unique_ptr<AudioEngine> PulseAudioInput::makeEngine()
{
    return std::make_unique<PulseCapture>(*m_server, m_server->defaultSource());
}

} // namespace tulvane
