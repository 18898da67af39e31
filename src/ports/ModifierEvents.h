#pragma once

#include <base/Result.h>
#include <ports/ModifierEventsError.h>

#include <QtGlobal>

#include <chrono>
#include <functional>
#include <memory>

namespace tulvane {

/// Something that a tap has to tell.
struct ModifierEvent {
    enum class Type {
        flagsChanged,        ///< a modifier key went down or up
        disabledByTimeout,   ///< the system has switched the tap off; `enable` switches it on again
        disabledByUserInput, ///< likewise
        lost,                ///< the tap is at its end, because the desktop is
    };

    Type type = Type::flagsChanged;
    qint64 keyCode = 0; ///< macOS virtual key code of the key that changed, left and right told apart
    quint64 flags = 0;  ///< what is held now: `eventFlags`, left and right alike
    std::chrono::milliseconds age{0}; ///< how long ago it happened; a busy program handles it late
};

/// Watches the modifier keys wherever the focus is, without taking or changing any event. Main thread; so are
/// all handlers.
class ModifierEvents {
public:
    /// A running watch; dropping it ends it. It may be dropped from within its own handler.
    class Tap {
    public:
        Tap() = default;
        Tap(const Tap&) = delete;
        Tap& operator=(const Tap&) = delete;
        virtual ~Tap() = default;

        /// A new tap reports nothing until it is enabled.
        virtual void enable() = 0;
        virtual void disable() = 0;
    };
    using Handler = std::function<void(const ModifierEvent&)>;

    ModifierEvents() = default;
    ModifierEvents(const ModifierEvents&) = delete;
    ModifierEvents& operator=(const ModifierEvents&) = delete;
    virtual ~ModifierEvents() = default;

    /// Whether a tap has to read every key that the user presses, since the desktop tells of none: only for a
    /// user who was told so and agreed.
    [[nodiscard]] virtual bool readsEveryKey() const { return false; }

    /// A tap that reports every modifier key. `keyCode` is the key that it is wanted for: a system that never
    /// sees that one says so here.
    [[nodiscard]] virtual Result<std::unique_ptr<Tap>, ModifierEventsError>
    createTap(qint64 keyCode, const Handler& handler) = 0;
};

} // namespace tulvane
