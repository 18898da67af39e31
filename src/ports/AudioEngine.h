#pragma once

#include <base/Result.h>

#include <QString>

#include <cstdint>
#include <functional>
#include <span>

namespace tulvane {

/// What a microphone gives. A rate of 0, or no channels, says that there is no microphone.
struct AudioFormat {
    double sampleRate = 0; ///< frames a second
    int channels = 0;

    bool operator==(const AudioFormat&) const = default;
};

/// Takes captured sound: interleaved 32-bit float samples, nominally -1 to 1, in whole frames of the engine's
/// input format. Called on the audio thread, so it must not wait; the samples are gone when it returns.
using AudioTap = std::function<void(std::span<const float> interleaved)>;

/// One recording from the microphone that was the default one when the engine was made: it never moves to
/// another. Made by AudioInput, used once, and dropped. Every function belongs to the main thread, and so
/// does the destructor, which stops a running engine. The AudioInput must outlive it.
class AudioEngine {
public:
    AudioEngine() = default;
    AudioEngine(const AudioEngine&) = delete;
    AudioEngine& operator=(const AudioEngine&) = delete;
    virtual ~AudioEngine() = default;

    /// The hardware's own format; the same for the engine's life. Does not touch the microphone.
    [[nodiscard]] virtual AudioFormat inputFormat() const = 0;

    /// The microphone's name as its owner knows it, for the log; empty when there is none.
    [[nodiscard]] virtual QString deviceName() const = 0;

    /// From the start on, `tap` gets all sound in order, in buffers of at most `mostFrames` frames. Sound
    /// that the system lost comes as silence of the same length. Before `start`.
    virtual void installTap(std::uint32_t mostFrames, AudioTap tap) = 0;

    /// When this returns, the tap is not running and is never called again. Does nothing when there is none.
    virtual void removeTap() = 0;

    /// Opens the microphone and waits until it is open, at most 250 ms. Fails with the reason in the user's
    /// language; the microphone is closed then.
    [[nodiscard]] virtual Result<void, QString> start() = 0;

    /// Closes the microphone. Does nothing when it is not open.
    virtual void stop() = 0;

    /// `changed` is called on the main thread, from the event loop, at most once, when a started engine has
    /// lost its microphone: another one became the default, it was removed or suspended, or the sound system
    /// went away. Never after `stop`. It may destroy the engine.
    virtual void setConfigurationChanged(std::function<void()> changed) = 0;

    /// `stalled` is called in the same way, instead of the one above and at most once, when the microphone of
    /// a started engine has delivered no sound for two seconds. What the tap got until then is good.
    virtual void setStalled(std::function<void()> stalled) = 0;
};

} // namespace tulvane
