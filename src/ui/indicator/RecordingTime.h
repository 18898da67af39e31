#pragma once

#include <base/Scheduler.h>

#include <chrono>
#include <functional>
#include <memory>

namespace tulvane {

class Clock;
class HUDModel;

/// The time in the indicator: how long a recording has lasted, from its first full minute on, and how long it
/// can still last, in its last ten seconds. Main thread.
class RecordingTime final {
public:
    static constexpr std::chrono::seconds shownFrom{60};
    static constexpr std::chrono::seconds countedDown{10};

    /// All collaborators outlive this object.
    RecordingTime(HUDModel& model, Scheduler& scheduler, const Clock& clock);

    /// A recording begins now, and ends by itself after `longest`.
    void begin(std::chrono::seconds longest);
    /// Whether the indicator can be seen: nothing wakes the program for what cannot be seen.
    void setShown(bool shown);
    /// It has ended.
    void end();

private:
    void tick();
    /// In whole seconds.
    [[nodiscard]] std::chrono::seconds elapsed() const;

    HUDModel& m_model;
    Scheduler& m_scheduler;
    const Clock& m_clock;
    std::chrono::nanoseconds m_begin{0};
    std::chrono::seconds m_longest{0};
    bool m_isRecording = false;
    bool m_isShown = false;
    std::unique_ptr<Scheduler::Token> m_next;
};

} // namespace tulvane
