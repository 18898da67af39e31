#pragma once

#include <platform/linux/pulse/PulseServer.h>
#include <platform/linux/pulse/TapFeed.h>
#include <ports/AudioEngine.h>

#include <QObject>
#include <QTimer>

#include <atomic>
#include <chrono>
#include <optional>

struct pa_stream;

namespace tulvane {

/// One recording from one microphone of the sound server, which never moves it to another. The server
/// converts whole numbers of any size to float, exactly; rate and channels are the hardware's own.
class PulseCapture final : public QObject, public AudioEngine {
    Q_OBJECT

public:
    /// `source` is nullopt where there is no microphone. The server must outlive this.
    PulseCapture(PulseServer& server, std::optional<PulseSource> source);
    PulseCapture(const PulseCapture&) = delete;
    PulseCapture& operator=(const PulseCapture&) = delete;
    ~PulseCapture() override;

    [[nodiscard]] AudioFormat inputFormat() const override;
    [[nodiscard]] QString deviceName() const override;
    void installTap(std::uint32_t mostFrames, AudioTap tap) override;
    void removeTap() override;
    [[nodiscard]] Result<void, QString> start() override;
    void stop() override;
    void setConfigurationChanged(std::function<void()> changed) override;
    void setStalled(std::function<void()> stalled) override;

Q_SIGNALS:
    /// The stream ended, moved or was suspended. On the audio thread.
    void streamLost();

private:
    // With the lock held.
    [[nodiscard]] bool openStream(pa_context* context);
    void listen();
    void closeStream();
    [[nodiscard]] Result<void, QString> waitUntilOpen(PulseLock& lock);

    // On the audio thread, called by libpulse.
    void streamChanged();
    void read();

    void checkDefault();
    void keepWatch();
    void reportLoss();
    void report(const std::function<void()>& handler);

    PulseServer& m_server;
    const std::optional<PulseSource> m_source;
    std::function<void()> m_changed;
    std::function<void()> m_stalled;
    QTimer m_watchdog;
    bool m_running = false; ///< main thread only: from a start to the stop, or to the loss that was reported

    // Guarded by the lock.
    pa_stream* m_stream = nullptr;
    TapFeed m_feed;

    std::atomic<std::chrono::steady_clock::time_point> m_lastSound; ///< when the last buffer came
};

} // namespace tulvane
