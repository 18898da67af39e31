#pragma once

#include <base/Scheduler.h>

#include <chrono>
#include <functional>
#include <memory>

namespace tulvane {

class Clock;

/// Leads an opacity from where it is to where it shall be, evenly, about sixty times a second. Main thread.
class Fade final {
public:
    /// `apply` receives every new opacity, 0 to 1. Both collaborators outlive the fade.
    Fade(Scheduler& scheduler, const Clock& clock, std::function<void(double)> apply);

    /// From the present opacity; takes the place of a fade that is on its way. A time of 0 is at once.
    void run(double target, std::chrono::milliseconds time);
    /// At once; ends a fade that is on its way.
    void set(double opacity);
    [[nodiscard]] double opacity() const { return m_opacity; }
    /// Where it is or is on its way to.
    [[nodiscard]] double target() const { return m_step ? m_target : m_opacity; }

private:
    void step();
    void planStep();
    void apply(double opacity);

    Scheduler& m_scheduler;
    const Clock& m_clock;
    std::function<void(double)> m_apply;
    double m_opacity = 0;
    double m_origin = 0;
    double m_target = 0;
    std::chrono::nanoseconds m_begin{0};
    std::chrono::nanoseconds m_time{0};
    std::unique_ptr<Scheduler::Token> m_step; ///< null when nothing is on its way
};

} // namespace tulvane
