#include <stats/Calendar.h>

#include <algorithm>
#include <chrono>

namespace tulvane {

namespace {
/// Longer than any day, and short enough to see at most one change of the clock.
constexpr std::chrono::seconds moreThanADay = std::chrono::hours(26);
} // namespace

Calendar Calendar::current()
{
    return Calendar(QTimeZone::systemTimeZone());
}

QDateTime Calendar::inZone(const QDateTime& moment) const
{
    return m_zone.isValid() ? moment.toTimeZone(m_zone) : moment.toLocalTime();
}

QDateTime Calendar::at(QDate date, QTime time) const
{
    return m_zone.isValid() ? QDateTime(date, time, m_zone) : QDateTime(date, time);
}

QDateTime Calendar::startOf(QDate date) const
{
    const QDateTime start = m_zone.isValid() ? date.startOfDay(m_zone) : date.startOfDay();
    if (!start.isValid())
        return start;
    // Where the clock is put back over midnight, midnight comes twice, and the library may give the second.
    // The first is known by the offset that held before the change.
    const int offset = inZone(start.addSecs(-moreThanADay.count())).offsetFromUtc();
    const QDateTime first = inZone(QDateTime(date, QTime(0, 0), Qt::OffsetFromUTC, offset));
    return first.date() == date ? std::min(first, start) : start;
}

QDateTime Calendar::startOfDay(const QDateTime& moment) const
{
    return startOf(dateOf(moment));
}

QDateTime Calendar::daysBefore(const QDateTime& startOfDay, int days) const
{
    QDate date = dateOf(startOfDay);
    QDateTime start = startOfDay;
    for (int left = days; left > 0 && date.isValid();) {
        date = date.addDays(-1);
        const QDateTime earlier = startOf(date);
        if (!earlier.isValid())
            continue;
        start = earlier;
        --left;
    }
    return start;
}

} // namespace tulvane
