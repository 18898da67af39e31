#include "AudioWorld.h"

#include <platform/fake/FakeAudioInput.h>

#include <thread>
#include <vector>

namespace tulvane::test {

namespace {

class FakeWorld final : public AudioWorld {
public:
    explicit FakeWorld(AudioFormat hardware) : m_hardware(hardware) { m_input.setFormat(hardware); }

    [[nodiscard]] AudioInput& input() override { return m_input; }
    [[nodiscard]] AudioFormat hardware() const override { return m_hardware; }
    [[nodiscard]] QString deviceName() const override { return QStringLiteral("Fake Microphone"); }
    void sound(std::span<const float> mono) override
    {
        std::vector<float> interleaved;
        for (const float sample : mono)
            interleaved.insert(interleaved.end(), static_cast<std::size_t>(m_hardware.channels), sample);
        std::thread audio([&] { m_input.push(interleaved); });
        audio.join();
    }
    [[nodiscard]] bool isOpen() const override { return m_input.isOpen(); }
    void loseMicrophone() override { m_input.changeConfiguration(); }
    void stall() override { m_input.stall(); }
    void removeAllMicrophones() override { m_input.setFormat({}); }
    void breakStart() override { m_input.setStartFailure(QStringLiteral("broken")); }

private:
    AudioFormat m_hardware;
    FakeAudioInput m_input;
};

} // namespace

std::unique_ptr<AudioWorld> makeFakeWorld(AudioFormat hardware)
{
    return std::make_unique<FakeWorld>(hardware);
}

} // namespace tulvane::test
