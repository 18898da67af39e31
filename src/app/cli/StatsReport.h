#pragma once

#include <stats/StatsSummary.h>

#include <QJsonObject>
#include <QString>

namespace tulvane::cli {

/// Everything that `stats` prints about one period.
struct StatsReport {
    StatsPeriod period = StatsPeriod::week;
    PeriodTotals totals;
    qint64 currentStreak = 0;
    std::optional<DailyStat> bestDay;
    QList<DailyStat> dailyWords; ///< oldest first
    qint64 typingWordsPerMinute = 0;
    Calendar calendar;

    [[nodiscard]] static StatsReport of(const StatsSummary& summary, StatsPeriod period,
                                        qint64 typingWordsPerMinute, const QDateTime& now);

    /// One object; dates are local, numbers unrounded.
    [[nodiscard]] QJsonObject toJson() const;
    /// Lines for a reader, in English, with a bar for each day.
    [[nodiscard]] QString toText() const;
};

} // namespace tulvane::cli
