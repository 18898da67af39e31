#pragma once

#include <ports/ModifierEvents.h>

#include <functional>
#include <memory>
#include <optional>

namespace tulvane {

/// Watches one modifier key and reports each time that it goes down and each time that it goes up, once. It
/// takes no event from anybody. Main thread.
///
/// Left and right share one flag, so while the left-hand key of the same modifier is held, letting go of the
/// right-hand one goes unnoticed until its next change finds the flag clear. That is meant to be so.
class ModifierKeyTap final {
public:
    /// True when the key went down, false when it went up.
    using Handler = std::function<void(bool)>;
    /// The tap has stopped by itself, because the desktop has ended.
    using LostHandler = std::function<void()>;

    /// Watches nothing yet. `events` outlives this object; either handler may destroy it.
    ModifierKeyTap(ModifierEvents& events, qint64 keyCode, Handler handler, LostHandler lost = {});

    /// True when the tap is running, also when it already was; otherwise `failure` says why not.
    [[nodiscard]] bool start();
    /// Safe to call when not running. A key that is held now reports no release.
    void stop();

    [[nodiscard]] bool isRunning() const { return m_tap != nullptr; }
    [[nodiscard]] bool isDown() const { return m_isDown; }
    /// For the handler: how long ago the change happened that it is called for.
    [[nodiscard]] std::chrono::milliseconds eventAge() const { return m_eventAge; }
    [[nodiscard]] qint64 keyCode() const { return m_keyCode; }
    /// Why the last `start` failed.
    [[nodiscard]] std::optional<ModifierEventsError> failure() const { return m_failure; }

private:
    void receive(const ModifierEvent& event);
    void receiveFlags(const ModifierEvent& event);

    ModifierEvents& m_events;
    qint64 m_keyCode;
    Handler m_handler;
    LostHandler m_lost;
    std::unique_ptr<ModifierEvents::Tap> m_tap;
    std::optional<ModifierEventsError> m_failure;
    bool m_isDown = false;
    std::chrono::milliseconds m_eventAge{0};
};

} // namespace tulvane
