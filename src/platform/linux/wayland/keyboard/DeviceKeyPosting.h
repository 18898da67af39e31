#pragma once

#include <platform/linux/wayland/keyboard/KeyDevice.h>
#include <ports/KeyPosting.h>

#include <functional>
#include <memory>

namespace tulvane {

/// Synthesized keystrokes over a keyboard of our own at the compositor. Main thread; waits for the
/// compositor, never for another program.
class DeviceKeyPosting final : public KeyPosting {
public:
    struct Hooks {
        /// Whether keys that are posted now reach the target.
        std::function<bool(const PasteTarget&)> isInFront;
        /// The target's chord goes out now.
        std::function<void(const PasteTarget&)> pasting;
    };

    DeviceKeyPosting(std::unique_ptr<KeyDevice> device, Hooks hooks)
        : m_device(std::move(device)),
          m_hooks(std::move(hooks))
    {
    }

    [[nodiscard]] QFuture<bool> paste(const PasteTarget& target) override;
    [[nodiscard]] QFuture<bool> typeSpaces(int count) override;

private:
    std::unique_ptr<KeyDevice> m_device;
    Hooks m_hooks;
};

} // namespace tulvane
