#pragma once

#include <stats/Calendar.h>
#include <stats/DailyStat.h>
#include <stats/StatsPeriod.h>

#include <QList>

#include <optional>

namespace tulvane {

class StatsStore;

/// The sums over a period.
struct PeriodTotals {
    qint64 dictations = 0;
    qint64 words = 0;
    qint64 characters = 0;
    double speechSeconds = 0; ///< seconds of recorded speech
    qint64 activeDays = 0;    ///< days with at least one dictation

    [[nodiscard]] friend bool operator==(const PeriodTotals&, const PeriodTotals&) = default;
};

/// Figures over the days of a store as they are now, worked out on demand; `now` says which day is today.
/// A value type; any thread. A sum that would leave 64 bits ends the program.
class StatsSummary final {
public:
    explicit StatsSummary(const StatsStore& store);
    /// `days` ascending, each date the first moment of a day in the calendar, at most one entry a day.
    StatsSummary(const QList<DailyStat>& days, const Calendar& calendar);

    /// Days after today, which a clock set back leaves, are counted in.
    [[nodiscard]] PeriodTotals totals(StatsPeriod period, const QDateTime& now) const;
    /// How many days in a row have a dictation, up to today; up to yesterday while today has none.
    [[nodiscard]] qint64 currentStreak(const QDateTime& now) const;
    /// The day with the most words of all time; the earlier one of equals.
    [[nodiscard]] std::optional<DailyStat> bestDay() const;
    /// The last `count` days, oldest first, today last; a day without entry has its date and zeros.
    [[nodiscard]] QList<DailyStat> dailyWords(int count, const QDateTime& now) const;

    [[nodiscard]] const Calendar& calendar() const { return m_calendar; }

private:
    QList<DailyStat> m_days;
    Calendar m_calendar;
};

} // namespace tulvane
