#pragma once

#include <support/ScratchFolder.h>

#include <QProcess>
#include <QString>
#include <QStringList>

#include <memory>
#include <span>
#include <vector>

namespace tulvane::test {

/// A real sound server of the test's own, in a scratch folder, with a virtual microphone: what is played into
/// the sink `micsink` is what its default source `vmic` ("Virtual Microphone") hears. Its default sink is
/// another, `speakers`. It ends with this object, and with the test's process. Main thread.
class SoundServer final {
public:
    enum class Kind { pulseAudio, pipeWire };
    struct Microphone {
        int rate = 48000;
        int channels = 2;
        QString format = QStringLiteral("s16le"); ///< PulseAudio alone; PipeWire's is always float
    };

    explicit SoundServer(Kind kind = Kind::pulseAudio);
    explicit SoundServer(const Microphone& microphone, Kind kind = Kind::pulseAudio);
    SoundServer(const SoundServer&) = delete;
    SoundServer& operator=(const SoundServer&) = delete;
    ~SoundServer();

    /// As in PULSE_SERVER; the same for the object's life, server or no server.
    [[nodiscard]] QString address() const;

    /// Starts it again after `kill`. The constructor has called it once.
    void start();
    /// Ends the server as a crash would.
    void kill();
    /// The server stops answering, without its connections being closed.
    void freeze();
    void thaw();

    /// Runs `pactl` and returns what it printed. Ends the test program when it fails.
    QString control(const QStringList& arguments) const;
    /// Returns when the server says that this is its default microphone.
    void setDefaultSource(const QString& name) const;
    /// How many programs hold a microphone open.
    [[nodiscard]] int openMicrophones() const;

    /// Plays interleaved samples into the virtual microphone and returns at once; the player ends by itself.
    [[nodiscard]] std::unique_ptr<QProcess> play(std::span<const float> interleaved, int rate,
                                                 int channels = 1);
    /// The same for any sound file that libsndfile reads.
    [[nodiscard]] std::unique_ptr<QProcess> play(const QString& file);
    /// Records from a source, `NAME.monitor` for what a sink plays, until it is killed: two channels, 48 kHz,
    /// 32-bit floats on its standard output.
    [[nodiscard]] std::unique_ptr<QProcess> record(const QString& source) const;

private:
    [[nodiscard]] QString busAddress() const;
    [[nodiscard]] QProcessEnvironment environment() const;
    void waitForFile(const QString& name) const;
    void launch(const QString& program, const QStringList& arguments);
    void startPulseAudio();
    void startPipeWire();
    [[nodiscard]] bool hasDefaultSource(const QString& name) const;
    void waitUntilReady() const;
    /// Runs `pactl` until it succeeds.
    void insist(const QStringList& arguments) const;
    void signalAll(int signal);
    [[nodiscard]] std::unique_ptr<QProcess> run(const QString& program, const QStringList& arguments) const;

    ScratchFolder m_folder;
    Microphone m_microphone;
    Kind m_kind;
    std::vector<std::unique_ptr<QProcess>> m_processes;
    int m_played = 0;
};

} // namespace tulvane::test
