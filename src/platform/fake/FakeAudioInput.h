#pragma once

#include <ports/AudioInput.h>

#include <QString>
#include <QStringList>

#include <memory>
#include <optional>
#include <span>

namespace tulvane {

/// A microphone under a script: what is pushed is what it records. Main thread, except `push`.
class FakeAudioInput final : public AudioInput {
public:
    FakeAudioInput();
    FakeAudioInput(const FakeAudioInput&) = delete;
    FakeAudioInput& operator=(const FakeAudioInput&) = delete;
    ~FakeAudioInput() override;

    [[nodiscard]] std::unique_ptr<AudioEngine> makeEngine() override;

    /// For the engines made from now on.
    void setFormat(AudioFormat format);
    void setDeviceName(const QString& name);
    /// Every start fails with this reason, until it is nullopt again.
    void setStartFailure(std::optional<QString> reason);

    /// Hands interleaved samples to the running engine's tap, in buffers of `framesPerBuffer` frames or the
    /// tap's limit, on the calling thread: any thread, the audio thread of the moment. False when no engine
    /// runs with a tap. Samples that are no whole number of frames go through as they are.
    bool push(std::span<const float> interleaved, std::size_t framesPerBuffer = 960);

    /// Something happens to the running engine's microphone; its handler is called from the event loop.
    void changeConfiguration();
    /// No sound comes from it any more; its handler is called from the event loop.
    void stall();

    [[nodiscard]] int enginesMade() const;
    /// Whether an engine is running: the microphone is open.
    [[nodiscard]] bool isOpen() const;
    [[nodiscard]] bool hasTap() const;
    /// Every call to the engines, oldest first: "make", "tap 4096", "start", "untap", "stop", "drop".
    [[nodiscard]] QStringList calls() const;
    void forgetCalls();

private:
    struct State;
    class Engine;
    [[nodiscard]] Engine* running() const;

    std::shared_ptr<State> m_state;
};

} // namespace tulvane
