#include <base/Clock.h>
#include <base/Translate.h>
#include <ui/indicator/HUDModel.h>
#include <ui/indicator/RecordingTime.h>

#include <QString>

#include <algorithm>

namespace tulvane {

namespace {

using namespace std::chrono_literals;

QString minutesAndSeconds(std::chrono::seconds time)
{
    return QStringLiteral("%1:%2").arg(time / 1min).arg((time % 1min).count(), 2, 10, QLatin1Char('0'));
}

} // namespace

RecordingTime::RecordingTime(HUDModel& model, Scheduler& scheduler, const Clock& clock)
    : m_model(model),
      m_scheduler(scheduler),
      m_clock(clock)
{
}

void RecordingTime::begin(std::chrono::seconds longest)
{
    m_begin = m_clock.elapsed();
    m_longest = longest;
    m_isRecording = true;
    if (m_isShown)
        tick();
}

void RecordingTime::setShown(bool shown)
{
    m_isShown = shown;
    m_next.reset();
    if (m_isShown && m_isRecording)
        tick();
}

void RecordingTime::end()
{
    m_isRecording = false;
    m_next.reset();
    m_model.setTime({}, false);
}

std::chrono::seconds RecordingTime::elapsed() const
{
    return std::chrono::floor<std::chrono::seconds>(m_clock.elapsed() - m_begin);
}

void RecordingTime::tick()
{
    const std::chrono::seconds gone = elapsed();
    const std::chrono::seconds left = std::max(m_longest - gone, 0s);
    const bool isEnding = left <= countedDown;
    if (isEnding)
        m_model.setTime(translate("%1 s left").arg(left.count()), true);
    else
        m_model.setTime(gone < shownFrom ? QString() : minutesAndSeconds(gone), false);
    if (left == 0s) {
        m_next.reset();
        return;
    }
    // Until something changes, nothing wakes the program.
    const bool isSilent = !isEnding && gone < shownFrom;
    const std::chrono::seconds next = isSilent ? std::min(shownFrom, m_longest - countedDown) : gone + 1s;
    const auto wait = m_begin + next - m_clock.elapsed();
    m_next = m_scheduler.after(std::chrono::ceil<std::chrono::milliseconds>(wait), [this] { tick(); });
}

} // namespace tulvane
