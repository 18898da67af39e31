#include <stats/StatsStore.h>
#include <stats/StatsSummary.h>

#include <QHash>
#include <QSet>

#include <algorithm>

namespace tulvane {

StatsSummary::StatsSummary(const StatsStore& store) : StatsSummary(store.days(), store.calendar()) {}

StatsSummary::StatsSummary(const QList<DailyStat>& days, const Calendar& calendar)
    : m_days(days),
      m_calendar(calendar)
{
}

PeriodTotals StatsSummary::totals(StatsPeriod period, const QDateTime& now) const
{
    DailyStat sum;
    qint64 activeDays = 0;
    const QDateTime first = m_calendar.daysBefore(m_calendar.startOfDay(now), daysInPeriod(period) - 1);
    for (const DailyStat& day : m_days) {
        if (period != StatsPeriod::all && day.date < first)
            continue;
        if (!sum.add(day))
            qFatal("The sum of the statistics is more than 64 bits hold.");
        activeDays += day.dictations >= 1 ? 1 : 0;
    }
    return {sum.dictations, sum.words, sum.characters, sum.speechSeconds, activeDays};
}

qint64 StatsSummary::currentStreak(const QDateTime& now) const
{
    QSet<qint64> active;
    for (const DailyStat& day : m_days) {
        if (day.dictations >= 1)
            active.insert(day.date.toMSecsSinceEpoch());
    }
    QDateTime cursor = m_calendar.startOfDay(now);
    // Today can still become part of the streak, so it does not break it.
    if (!active.contains(cursor.toMSecsSinceEpoch()))
        cursor = m_calendar.daysBefore(cursor, 1);
    qint64 streak = 0;
    for (; active.contains(cursor.toMSecsSinceEpoch()); cursor = m_calendar.daysBefore(cursor, 1))
        ++streak;
    return streak;
}

std::optional<DailyStat> StatsSummary::bestDay() const
{
    const auto best = std::ranges::max_element(m_days, {}, &DailyStat::words);
    return best == m_days.end() ? std::nullopt : std::optional(*best);
}

QList<DailyStat> StatsSummary::dailyWords(int count, const QDateTime& now) const
{
    QHash<qint64, DailyStat> byDate;
    for (const DailyStat& day : m_days) {
        if (byDate.contains(day.date.toMSecsSinceEpoch()))
            qFatal("The statistics hold a day twice.");
        byDate.insert(day.date.toMSecsSinceEpoch(), day);
    }
    QList<DailyStat> list;
    QDateTime date = m_calendar.startOfDay(now);
    for (int i = 0; i < count; ++i, date = m_calendar.daysBefore(date, 1))
        list.prepend(byDate.value(date.toMSecsSinceEpoch(), DailyStat{.date = date}));
    return list;
}

} // namespace tulvane
