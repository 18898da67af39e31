#include <base/Scheduler.h>

#include <QTimer>

#include <utility>

namespace tulvane {

namespace {

class TimerToken final : public Scheduler::Token {
public:
    TimerToken(std::chrono::milliseconds delay, std::function<void()> work) : m_work(std::move(work))
    {
        m_timer.setSingleShot(true);
        m_timer.setTimerType(Qt::PreciseTimer);
        // The work may drop this token, so it runs from a copy of its own.
        QObject::connect(&m_timer, &QTimer::timeout, &m_timer, [this] {
            const auto now = std::exchange(m_work, nullptr);
            now();
        });
        m_timer.start(delay);
    }

private:
    QTimer m_timer;
    std::function<void()> m_work;
};

} // namespace

std::unique_ptr<Scheduler::Token> EventLoopScheduler::after(std::chrono::milliseconds delay,
                                                            std::function<void()> work)
{
    return std::make_unique<TimerToken>(delay, std::move(work));
}

} // namespace tulvane
