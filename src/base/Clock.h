#pragma once

#include <QDateTime>

#include <chrono>

namespace tulvane {

/// The time, as a collaborator, so that a test can hold it still. Safe to call from any thread.
class Clock {
public:
    Clock() = default;
    Clock(const Clock&) = delete;
    Clock& operator=(const Clock&) = delete;
    virtual ~Clock() = default;

    /// The wall clock, in the user's local time zone.
    [[nodiscard]] virtual QDateTime now() const = 0;
    /// Time since some fixed moment; never goes back, whatever happens to the wall clock.
    [[nodiscard]] virtual std::chrono::nanoseconds elapsed() const = 0;
};

/// The machine's own clocks.
class SystemClock final : public Clock {
public:
    [[nodiscard]] QDateTime now() const override { return QDateTime::currentDateTime(); }
    [[nodiscard]] std::chrono::nanoseconds elapsed() const override
    {
        return std::chrono::steady_clock::now().time_since_epoch();
    }
};

} // namespace tulvane
