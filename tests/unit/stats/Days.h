#pragma once

#include <stats/Calendar.h>
#include <stats/DailyStat.h>

#include <QDateTime>
#include <QTimeZone>

#include <gtest/gtest.h>

#include <ostream>

namespace tulvane {

// What GoogleTest shows of a value when an expectation fails.
inline void PrintTo(const DailyStat& day, std::ostream* out)
{
    *out << day.date.toString(Qt::ISODate).toStdString() << " " << day.dictations << "d " << day.words << "w "
         << day.characters << "c " << day.speechSeconds << "s";
}

} // namespace tulvane

namespace tulvane::test {

inline QTimeZone zone(const char* name)
{
    QTimeZone zone{QByteArray(name)};
    EXPECT_TRUE(zone.isValid()) << name << " is missing: the tests need the time-zone data";
    return zone;
}

inline QTimeZone oslo()
{
    return zone("Europe/Oslo");
}

/// A moment in UTC, written as 2025-03-14T23:00:00.
inline QDateTime utc(const char* text)
{
    return QDateTime::fromString(QString::fromLatin1(text) + u'Z', Qt::ISODate);
}

/// A wall-clock moment in Oslo.
inline QDateTime inOslo(int year, int month, int day, int hour = 0, int minute = 0, int second = 0)
{
    return {QDate(year, month, day), QTime(hour, minute, second), oslo()};
}

} // namespace tulvane::test
