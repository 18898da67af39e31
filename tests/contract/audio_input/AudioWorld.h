#pragma once

#include <ports/AudioInput.h>

#include <QString>

#include <functional>
#include <memory>
#include <span>
#include <string>

namespace tulvane::test {

/// A backend of the audio input together with hands on its microphone. Main thread.
class AudioWorld {
public:
    AudioWorld() = default;
    AudioWorld(const AudioWorld&) = delete;
    AudioWorld& operator=(const AudioWorld&) = delete;
    virtual ~AudioWorld() = default;

    [[nodiscard]] virtual AudioInput& input() = 0;
    [[nodiscard]] virtual AudioFormat hardware() const = 0;
    [[nodiscard]] virtual QString deviceName() const = 0;
    /// Sounds at the microphone, on all its channels, at its own rate; returns when it has sounded.
    virtual void sound(std::span<const float> mono) = 0;
    /// Whether any program holds the microphone open.
    [[nodiscard]] virtual bool isOpen() const = 0;
    /// The user chooses another default microphone, or the system takes this one away.
    virtual void loseMicrophone() = 0;
    /// The microphone stays open and delivers nothing any more. The world answers no other question then.
    virtual void stall() = 0;
    /// There is no microphone from now on.
    virtual void removeAllMicrophones() = 0;
    /// The next start cannot succeed.
    virtual void breakStart() = 0;
};

struct Backend {
    std::string name;
    std::function<std::unique_ptr<AudioWorld>()> make;
};

[[nodiscard]] std::unique_ptr<AudioWorld> makeFakeWorld(AudioFormat hardware);
/// Over a real server.
[[nodiscard]] std::unique_ptr<AudioWorld> makePulseAudioWorld(AudioFormat hardware,
                                                              const QString& sampleFormat);
[[nodiscard]] std::unique_ptr<AudioWorld> makePipeWireWorld(AudioFormat hardware);

} // namespace tulvane::test
