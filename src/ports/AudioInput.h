#pragma once

#include <ports/AudioEngine.h>

#include <memory>

namespace tulvane {

/// The way to the default microphone. Keeps whatever connection the system needs, and takes it up again when
/// it was lost, without opening a microphone: no recording light, no bus traffic. Main thread.
class AudioInput {
public:
    AudioInput() = default;
    AudioInput(const AudioInput&) = delete;
    AudioInput& operator=(const AudioInput&) = delete;
    virtual ~AudioInput() = default;

    /// An engine for one recording from the present default microphone. Never null: without a microphone, or
    /// without a sound system, the engine's format says so. Returns at once, or, while the connection is
    /// being made, within 250 ms.
    [[nodiscard]] virtual std::unique_ptr<AudioEngine> makeEngine() = 0;
};

} // namespace tulvane
