#pragma once

#include <QDateTime>
#include <QTimeZone>

namespace tulvane {

/// Day boundaries in one time zone, held fixed for the calendar's life, so that the moments which stand for
/// days stay comparable. Knows days of 23 and 25 hours, days that begin after midnight because the clock
/// jumped over it, days whose midnight comes twice (the first counts) and dates that a zone left out.
/// A value type; any thread.
class Calendar final {
public:
    /// The user's own calendar: the zone that the system is set to now.
    [[nodiscard]] static Calendar current();

    explicit Calendar(const QTimeZone& zone) : m_zone(zone) {}

    /// The first moment of the day that holds the given moment.
    [[nodiscard]] QDateTime startOfDay(const QDateTime& moment) const;
    /// The first moment of the day `days` calendar days earlier (0 or more). A date that the zone left out
    /// is no day, and is stepped over.
    [[nodiscard]] QDateTime daysBefore(const QDateTime& startOfDay, int days) const;
    /// The date on the wall at that moment.
    [[nodiscard]] QDate dateOf(const QDateTime& moment) const { return inZone(moment).date(); }
    /// The moment when the wall shows that date and time; not valid where the clock may jump over it.
    [[nodiscard]] QDateTime at(QDate date, QTime time) const;

private:
    [[nodiscard]] QDateTime inZone(const QDateTime& moment) const;
    [[nodiscard]] QDateTime startOf(QDate date) const;

    /// Not valid where the system's zone has no name that Qt knows: then local time serves.
    QTimeZone m_zone;
};

} // namespace tulvane
