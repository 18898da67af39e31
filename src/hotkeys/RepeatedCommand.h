#pragma once

#include <base/Clock.h>
#include <base/Scheduler.h>
#include <hotkeys/HotkeyStateMachine.h>

#include <chrono>
#include <functional>
#include <memory>

namespace tulvane {

/// A hotkey on a desktop that can only run a command for it, and runs it over and over while the key is held:
/// the calls become one press and one release. Repeats distinguish a held key from a tap. Main
/// thread.
class RepeatedCommand final {
public:
    /// A call so soon after another one is the keyboard's, not the user's: before a desktop repeats a key, it
    /// waits.
    static constexpr std::chrono::milliseconds firstRepeat{700};
    /// Of a key that is held the next call comes sooner, unless the machine is so busy that the calls come in
    /// bursts: then after this many times the longest pause so far, but no later than `longestPause`.
    static constexpr std::chrono::milliseconds nextRepeat{300};
    static constexpr int pauseFactor = 4;
    static constexpr std::chrono::milliseconds longestPause{1200};
    /// How long a tap is said to have lasted.
    static constexpr std::chrono::milliseconds tap{50};

    /// Both collaborators outlive this object. `tell` is called with how long ago the edge was.
    using Tell = std::function<void(HotkeyStateMachine::Event, std::chrono::milliseconds age)>;
    RepeatedCommand(const Clock& clock, Scheduler& scheduler, Tell tell);

    /// The command has been run.
    void note();

private:
    void release();
    /// How long the next call of a held key may take.
    [[nodiscard]] std::chrono::milliseconds patience() const;

    const Clock& m_clock;
    Scheduler& m_scheduler;
    Tell m_tell;
    std::chrono::nanoseconds m_pressedAt{0};
    std::chrono::nanoseconds m_lastAt{0};
    std::chrono::nanoseconds m_longest{0};   ///< of the pauses between the repeats
    bool m_isHeld = false;                   ///< it has repeated
    std::unique_ptr<Scheduler::Token> m_end; ///< pending while the key may be down
};

} // namespace tulvane
