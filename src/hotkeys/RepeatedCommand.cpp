#include <hotkeys/RepeatedCommand.h>

#include <algorithm>
#include <utility>

namespace tulvane {

RepeatedCommand::RepeatedCommand(const Clock& clock, Scheduler& scheduler, Tell tell)
    : m_clock(clock),
      m_scheduler(scheduler),
      m_tell(std::move(tell))
{
}

void RepeatedCommand::note()
{
    const auto pause = m_clock.elapsed() - m_lastAt;
    m_lastAt = m_clock.elapsed();
    if (m_end) {
        // Before it repeats a key, the desktop waits.
        if (m_isHeld)
            m_longest = std::max(m_longest, pause);
        m_isHeld = true;
        m_end = m_scheduler.after(patience(), [this] { release(); });
        return;
    }
    m_pressedAt = m_lastAt;
    m_longest = {};
    m_isHeld = false;
    m_end = m_scheduler.after(firstRepeat, [this] { release(); });
    m_tell(HotkeyStateMachine::Event::keyDown, {});
}

std::chrono::milliseconds RepeatedCommand::patience() const
{
    const auto pause = std::chrono::duration_cast<std::chrono::milliseconds>(m_longest) * pauseFactor;
    return std::clamp(pause, nextRepeat, longestPause);
}

void RepeatedCommand::release()
{
    m_end.reset();
    const auto releasedAt = m_isHeld ? m_lastAt : m_pressedAt + tap;
    m_tell(HotkeyStateMachine::Event::keyUp,
           std::chrono::duration_cast<std::chrono::milliseconds>(m_clock.elapsed() - releasedAt));
}

} // namespace tulvane
