#pragma once

#include <ports/Sounds.h>

#include <QStringList>

#include <functional>
#include <memory>
#include <string>

namespace tulvane::test {

/// A backend of the sounds together with ears at its speakers. Main thread.
class SoundsWorld {
public:
    SoundsWorld() = default;
    SoundsWorld(const SoundsWorld&) = delete;
    SoundsWorld& operator=(const SoundsWorld&) = delete;
    virtual ~SoundsWorld() = default;

    [[nodiscard]] virtual Sounds& sounds() = 0;
    /// What was heard since the last call, in order; returns when nothing more can come.
    [[nodiscard]] virtual QStringList heard() = 0;
    /// Whether any program holds a microphone open.
    [[nodiscard]] virtual bool isMicrophoneOpen() const = 0;
};

struct Backend {
    std::string name;
    std::function<std::unique_ptr<SoundsWorld>()> make;
};

[[nodiscard]] std::unique_ptr<SoundsWorld> makeFakeWorld();
/// Over real servers.
[[nodiscard]] std::unique_ptr<SoundsWorld> makePulseAudioWorld();
[[nodiscard]] std::unique_ptr<SoundsWorld> makePipeWireWorld();

} // namespace tulvane::test
