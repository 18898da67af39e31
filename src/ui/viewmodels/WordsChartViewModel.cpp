#include <base/Translate.h>
#include <stats/SpeakingFigures.h>
#include <stats/StatsFormat.h>
#include <stats/StatsTexts.h>
#include <ui/viewmodels/ChartAxis.h>
#include <ui/viewmodels/WordsChartViewModel.h>

#include <QLocale>

#include <algorithm>

namespace tulvane {

namespace {

/// Day and month, in the order of the user's language.
QString shortDate(QDate date)
{
    const QLocale locale;
    const QString usual = locale.dateFormat(QLocale::ShortFormat);
    const bool isMonthFirst = usual.indexOf(u'M') < usual.indexOf(u'd');
    return locale.toString(date, isMonthFirst ? QStringLiteral("MMM d") : translate("d MMM"));
}

QString weekday(QDate date)
{
    return QLocale().standaloneDayName(date.dayOfWeek(), QLocale::ShortFormat);
}

QString longDate(QDate date)
{
    return QLocale().toString(date, QLocale::LongFormat);
}

QString wordsText(qint64 words)
{
    return translate("%1 words").arg(formatCount(words));
}

} // namespace

void WordsChartViewModel::show(const StatsSummary& summary, int length, qint64 typingWordsPerMinute,
                               const QDateTime& now)
{
    m_typingSpeed = typingWordsPerMinute;
    m_days.clear();
    for (const DailyStat& stat : summary.dailyWords(length, now))
        m_days.append({stat, summary.calendar().dateOf(stat.date)});
    if (!chosen())
        m_selected.reset();
    Q_EMIT changed();
    Q_EMIT selectionChanged();
}

qint64 WordsChartViewModel::mostWords() const
{
    qint64 most = 0;
    for (const Day& day : m_days)
        most = std::max(most, day.stat.words);
    return most;
}

QVariantList WordsChartViewModel::bars() const
{
    QVariantList list;
    for (qsizetype i = 0; i < m_days.size(); ++i) {
        const auto& [stat, date] = m_days.at(i);
        const bool isToday = i + 1 == m_days.size();
        list.append(QVariantMap{
            {QStringLiteral("words"), static_cast<double>(stat.words)},
            {QStringLiteral("figure"), wordsText(stat.words)},
            {QStringLiteral("label"), isToday ? translate("Today") : shortDate(date)},
            {QStringLiteral("day"), QString(weekday(date) + u' ' + shortDate(date))},
            {QStringLiteral("name"),
             QStringLiteral("%1, %2 %3").arg(longDate(date), translate("Words"), formatCount(stat.words))},
            {QStringLiteral("isToday"), isToday}});
    }
    return list;
}

QVariantList WordsChartViewModel::ticks() const
{
    QVariantList list;
    for (const double tick : chartAxis(mostWords()).ticks)
        list.append(QVariantMap{{QStringLiteral("value"), tick},
                                {QStringLiteral("label"), formatCount(rounded(tick))}});
    return list;
}

double WordsChartViewModel::top() const
{
    return chartAxis(mostWords()).top;
}

QString WordsChartViewModel::caption() const
{
    return chartCaption(count());
}

QString WordsChartViewModel::label() const
{
    return chartLabel(count());
}

const WordsChartViewModel::Day* WordsChartViewModel::chosen() const
{
    const auto day = m_selected ? std::ranges::find(m_days, *m_selected, &Day::date) : m_days.end();
    return day == m_days.end() ? nullptr : &*day;
}

int WordsChartViewModel::selected() const
{
    const Day* const day = chosen();
    return day ? static_cast<int>(day - m_days.constData()) : -1;
}

QString WordsChartViewModel::selectedDay() const
{
    const Day* const day = chosen();
    return day ? longDate(day->date) : QString();
}

QString WordsChartViewModel::selectedWords() const
{
    const Day* const day = chosen();
    return day ? wordsText(day->stat.words) : QString();
}

QString WordsChartViewModel::selectedLine() const
{
    const Day* const day = chosen();
    return day ? selectedDayLine(day->stat, m_typingSpeed) : QString();
}

void WordsChartViewModel::select(int bar)
{
    if (bar < 0 || bar >= count() || bar == selected())
        m_selected.reset();
    else
        m_selected = m_days.at(bar).date;
    Q_EMIT selectionChanged();
}

} // namespace tulvane
