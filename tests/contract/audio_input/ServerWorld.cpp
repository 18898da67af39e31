#include "AudioWorld.h"

#include <platform/linux/pulse/PulseAudioInput.h>
#include <support/Await.h>
#include <support/SoundServer.h>

#include <QDeadlineTimer>
#include <QThread>

namespace tulvane::test {

namespace {

using namespace std::chrono_literals;

class ServerWorld final : public AudioWorld {
public:
    ServerWorld(AudioFormat hardware, const QString& sampleFormat, SoundServer::Kind kind)
        // PipeWire's remapped source always runs at the rate of the graph, whatever lies below it.
        : m_hardware{kind == SoundServer::Kind::pipeWire ? 48000 : hardware.sampleRate, hardware.channels},
          m_server({static_cast<int>(hardware.sampleRate), hardware.channels, sampleFormat}, kind),
          m_input(m_server.address())
    {
    }
    ServerWorld(const ServerWorld&) = delete;
    ServerWorld& operator=(const ServerWorld&) = delete;
    ~ServerWorld() override { m_server.thaw(); }

    [[nodiscard]] AudioInput& input() override { return m_input; }
    [[nodiscard]] AudioFormat hardware() const override { return m_hardware; }
    [[nodiscard]] QString deviceName() const override { return QStringLiteral("Virtual_Microphone"); }
    void sound(std::span<const float> mono) override
    {
        std::vector<float> interleaved;
        for (const float sample : mono)
            interleaved.insert(interleaved.end(), static_cast<std::size_t>(m_hardware.channels), sample);
        const auto player =
            m_server.play(interleaved, static_cast<int>(m_hardware.sampleRate), m_hardware.channels);
        if (!waitUntil([&] { return player->state() == QProcess::NotRunning; }) || player->exitCode() != 0)
            qFatal("The player failed: %s", player->readAllStandardError().constData());
    }
    [[nodiscard]] bool isOpen() const override { return m_server.openMicrophones() > 0; }
    void loseMicrophone() override
    {
        // Of a change in the first moments of a connection PipeWire may never tell, not even who asks. Of the
        // changes after that it does.
        for (const QDeadlineTimer limit(defaultTimeout); !limit.hasExpired();) {
            m_server.setDefaultSource(QStringLiteral("micsink.monitor"));
            if (seesAnotherMicrophone())
                return;
            m_server.setDefaultSource(QStringLiteral("vmic"));
        }
        qFatal("The input never hears of another default microphone");
    }
    void stall() override { m_server.freeze(); }
    void removeAllMicrophones() override
    {
        m_server.control({QStringLiteral("unload-module"), QStringLiteral("module-remap-source")});
        m_server.control({QStringLiteral("unload-module"), QStringLiteral("module-null-sink")});
        if (!waitUntil([&] { return m_input.makeEngine()->inputFormat() == AudioFormat{}; }))
            qFatal("The microphones do not go away");
    }
    void breakStart() override { m_server.freeze(); }

private:
    /// Without the event loop, so that nothing is reported meanwhile.
    [[nodiscard]] bool seesAnotherMicrophone()
    {
        for (const QDeadlineTimer soon(1s); !soon.hasExpired(); QThread::msleep(5)) {
            if (m_input.makeEngine()->deviceName() != deviceName())
                return true;
        }
        return false;
    }

    AudioFormat m_hardware;
    SoundServer m_server;
    PulseAudioInput m_input;
};

} // namespace

std::unique_ptr<AudioWorld> makePulseAudioWorld(AudioFormat hardware, const QString& sampleFormat)
{
    return std::make_unique<ServerWorld>(hardware, sampleFormat, SoundServer::Kind::pulseAudio);
}

std::unique_ptr<AudioWorld> makePipeWireWorld(AudioFormat hardware)
{
    return std::make_unique<ServerWorld>(hardware, QString(), SoundServer::Kind::pipeWire);
}

} // namespace tulvane::test
