#pragma once

#include <platform/linux/pulse/PulseMainloop.h>
#include <platform/linux/pulse/PulseSource.h>

#include <QByteArray>
#include <QObject>
#include <QTimer>

#include <optional>

struct pa_context;
struct pa_server_info;
struct pa_source_info;

namespace tulvane {

/// The connection to the sound server (PulseAudio, or PipeWire in its place), and what it says about the
/// default microphone, kept up to date. A lost connection is taken up again within five seconds of the
/// server's return, or as soon as a caller asks. Opens no microphone. Main thread, except where it says
/// otherwise.
class PulseServer final : public QObject {
    Q_OBJECT

public:
    /// `address` as in PULSE_SERVER; empty for the user's own server.
    explicit PulseServer(const QString& address);
    PulseServer(const PulseServer&) = delete;
    PulseServer& operator=(const PulseServer&) = delete;
    ~PulseServer() override;

    /// The default microphone, nullopt when there is none or no server. Asks the server, since PipeWire does
    /// not announce every change, and waits for its answer, at most 50 ms, or 250 ms while it is being
    /// connected to; then gives what it said before.
    [[nodiscard]] std::optional<PulseSource> defaultSource();

    /// Asks the server again; a change is reported by `defaultSourceChanged`.
    void refresh();
    /// What the server said last, without waiting for it; nullopt once the connection is lost.
    [[nodiscard]] std::optional<PulseSource> lastDefaultSource();

    /// The server's own name and version, as it last said; empty while there is no connection.
    [[nodiscard]] QString serverName();

    /// Whether the server refuses us: the connection, what it says of the microphone, or, within the last
    /// seconds, a recording. A server that is not there refuses nothing.
    [[nodiscard]] bool refusesMicrophone();
    /// With the lock held: a recording was refused, or not.
    void noteRecording(bool isRefused);

    [[nodiscard]] PulseMainloop& mainloop() { return m_mainloop; }
    /// With the lock held. Null while there is no connection.
    [[nodiscard]] pa_context* context() const;

Q_SIGNALS:
    /// Another microphone, or none, is the default one now. On the audio thread: connect it queued.
    void defaultSourceChanged();
    /// On the audio thread, with the lock held.
    void connected();
    /// On the audio thread.
    void connectionLost();

private:
    /// Whether libpulse may start the user's server, where it is set up to.
    enum class Autospawn { never, allowed };
    enum class State {
        lost,       ///< no connection
        connecting, ///< the connection is being made, or the first questions are being asked
        known,      ///< m_source is what the server said last
    };

    // With the lock held, from either thread.
    void connectContext(Autospawn autospawn);
    void dropContext();
    void ask();
    void settle(std::optional<PulseSource> source);

    // On the audio thread, called by libpulse.
    void contextChanged();
    [[nodiscard]] bool wasRefused() const;
    void serverAnswered(const pa_server_info* info);
    void sourceAnswered(const pa_source_info* info, int end);

    void tryAgain();

    PulseMainloop m_mainloop;
    QByteArray m_address;
    QTimer m_reconnect;

    // Guarded by the lock.
    pa_context* m_context = nullptr;
    State m_state = State::lost;
    std::optional<PulseSource> m_source;
    std::optional<PulseSource> m_answer; ///< of the question under way
    QByteArray m_defaultSink;
    QByteArray m_serverName;
    bool m_isRefused = false; ///< the connection, or the question for the microphone
    std::optional<std::chrono::steady_clock::time_point> m_recordingRefused;
    bool m_asking = false;
    bool m_askAgain = false; ///< something changed while a question was under way
};

} // namespace tulvane
