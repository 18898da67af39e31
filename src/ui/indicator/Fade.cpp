#include <base/Clock.h>
#include <ui/indicator/Fade.h>

#include <algorithm>
#include <utility>

namespace tulvane {

namespace {

constexpr std::chrono::milliseconds frame{16};

} // namespace

Fade::Fade(Scheduler& scheduler, const Clock& clock, std::function<void(double)> apply)
    : m_scheduler(scheduler),
      m_clock(clock),
      m_apply(std::move(apply))
{
}

void Fade::set(double opacity)
{
    m_step.reset();
    apply(opacity);
}

void Fade::run(double target, std::chrono::milliseconds time)
{
    if (target == this->target())
        return;
    if (time.count() <= 0) {
        set(target);
        return;
    }
    m_origin = m_opacity;
    m_target = target;
    m_begin = m_clock.elapsed();
    m_time = time;
    planStep();
}

void Fade::planStep()
{
    const auto left = m_begin + m_time - m_clock.elapsed();
    const auto wait = std::min<std::chrono::nanoseconds>(frame, left);
    m_step = m_scheduler.after(std::chrono::ceil<std::chrono::milliseconds>(wait), [this] { step(); });
}

void Fade::step()
{
    // By the clock, not by the number of steps: a busy moment makes the fade coarser, never longer.
    const auto gone = std::chrono::duration<double>(m_clock.elapsed() - m_begin);
    const double part = gone / std::chrono::duration<double>(m_time);
    if (part >= 1) {
        set(m_target);
        return;
    }
    apply(m_origin + (m_target - m_origin) * part);
    planStep();
}

void Fade::apply(double opacity)
{
    m_opacity = opacity;
    m_apply(opacity);
}

} // namespace tulvane
