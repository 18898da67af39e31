#pragma once

#include <QElapsedTimer>

namespace tulvane::test {

/// How long a start has taken, from its making on.
class StartTime final {
public:
    StartTime() { m_timer.start(); }

    /// Whether a start that failed may have failed for want of time: it has 250 ms to connect, and as many to
    /// open the microphone.
    [[nodiscard]] bool isUsedUp() const { return m_timer.elapsed() >= 240; }

private:
    QElapsedTimer m_timer;
};

} // namespace tulvane::test
