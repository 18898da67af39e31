#include <hotkeys/RepeatedCommand.h>

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
    m_lastAt = m_clock.elapsed();
    if (m_end) {
        m_isHeld = true;
        m_end = m_scheduler.after(nextRepeat, [this] { release(); });
        return;
    }
    m_pressedAt = m_lastAt;
    m_isHeld = false;
    m_end = m_scheduler.after(firstRepeat, [this] { release(); });
    m_tell(HotkeyStateMachine::Event::keyDown, {});
}

void RepeatedCommand::release()
{
    m_end.reset();
    const auto releasedAt = m_isHeld ? m_lastAt : m_pressedAt + tap;
    m_tell(HotkeyStateMachine::Event::keyUp,
           std::chrono::duration_cast<std::chrono::milliseconds>(m_clock.elapsed() - releasedAt));
}

} // namespace tulvane
