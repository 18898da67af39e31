#pragma once

#include <base/Clock.h>

namespace tulvane::test {

/// A clock that stands still until the test moves it. Main thread.
class FakeClock final : public Clock {
public:
    FakeClock() = default;
    explicit FakeClock(const QDateTime& now) : m_now(now) {}

    [[nodiscard]] QDateTime now() const override { return m_now; }
    [[nodiscard]] std::chrono::nanoseconds elapsed() const override { return m_elapsed; }

    void advance(std::chrono::nanoseconds by)
    {
        m_elapsed += by;
        m_now = m_now.addMSecs(std::chrono::duration_cast<std::chrono::milliseconds>(by).count());
    }
    void setNow(const QDateTime& now) { m_now = now; }

private:
    QDateTime m_now{QDate(2026, 11, 20), QTime(12, 0)};
    std::chrono::nanoseconds m_elapsed{0};
};

} // namespace tulvane::test
