#include <base/Translate.h>
#include <stats/SpeakingFigures.h>
#include <stats/StatsFormat.h>

#include <QCoreApplication>

namespace tulvane {

namespace {

constexpr qint64 minute = 60;
constexpr qint64 hour = 3600;

QString pattern(const char* english, Wording wording)
{
    return wording == Wording::user ? translate(english) : QString::fromUtf8(english);
}

} // namespace

QString formatDuration(double seconds, Wording wording)
{
    const qint64 whole = rounded(seconds);
    if (whole < minute)
        return pattern(QT_TRANSLATE_NOOP("tulvane", "%1 s"), wording).arg(whole);
    if (whole < hour)
        return pattern(QT_TRANSLATE_NOOP("tulvane", "%1 min"), wording).arg(whole / minute);
    const qint64 minutes = whole % hour / minute;
    if (minutes == 0)
        return pattern(QT_TRANSLATE_NOOP("tulvane", "%1 h"), wording).arg(whole / hour);
    return pattern(QT_TRANSLATE_NOOP("tulvane", "%1 h %2 min"), wording).arg(whole / hour).arg(minutes);
}

QString formatCount(qint64 count, const QLocale& locale)
{
    return locale.toString(count);
}

QString formatFactor(double factor, const QLocale& locale)
{
    return locale.toString(factor, 'f', 1);
}

QString formatDay(QDate date, const QLocale& locale)
{
    return locale.toString(date, QLocale::ShortFormat);
}

} // namespace tulvane
