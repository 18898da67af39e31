#include <app/cli/StatsReport.h>
#include <stats/SpeakingFigures.h>
#include <stats/StatsFormat.h>

#include <QJsonArray>

#include <algorithm>
#include <utility>

namespace tulvane::cli {

namespace {

constexpr double longestBar = 40;

QString dateText(const DailyStat& day, const Calendar& calendar)
{
    return calendar.dateOf(day.date).toString(Qt::ISODate);
}

QJsonObject wordsOf(const DailyStat& day, const Calendar& calendar)
{
    return {{QStringLiteral("date"), dateText(day, calendar)}, {QStringLiteral("words"), day.words}};
}

QLocale english()
{
    return {QLocale::English, QLocale::UnitedStates};
}

QString count(qint64 number)
{
    return formatCount(number, english());
}

QString counted(qint64 number, const QString& one, const QString& many)
{
    return count(number) + u' ' + (number == 1 ? one : many);
}

QString speedText(const PeriodTotals& totals, qint64 typingWordsPerMinute)
{
    const auto speed = wordsPerMinute(totals);
    if (!speed)
        return QStringLiteral("–");
    return QStringLiteral("%1 words/min, %2 × typing")
        .arg(rounded(*speed))
        .arg(formatFactor(speedFactor(*speed, typingWordsPerMinute), english()));
}

QString activeDaysText(const PeriodTotals& totals, StatsPeriod period)
{
    const int days = daysInPeriod(period);
    return days == 0 ? count(totals.activeDays) : QStringLiteral("%1 of %2").arg(totals.activeDays).arg(days);
}

/// The chart lying on its side, one line a day.
QString chart(const QList<DailyStat>& days, const Calendar& calendar)
{
    qint64 most = 1;
    qsizetype widest = 0;
    for (const DailyStat& day : days) {
        most = std::max(most, day.words);
        widest = std::max(widest, count(day.words).size());
    }
    QString text = QStringLiteral("\nWords per day, last %1 days\n").arg(days.size());
    for (const DailyStat& day : days) {
        const double share = static_cast<double>(day.words) / static_cast<double>(most);
        // A day with words always shows something.
        const auto blocks = day.words < 1 ? 0 : std::max(qint64{1}, rounded(share * longestBar));
        QString line =
            dateText(day, calendar) + QStringLiteral("  ") + count(day.words).rightJustified(widest);
        if (blocks > 0)
            line += QStringLiteral("  ") + QString(blocks, u'█');
        text += line + u'\n';
    }
    return text;
}

} // namespace

StatsReport StatsReport::of(const StatsSummary& summary, StatsPeriod period, qint64 typingWordsPerMinute,
                            const QDateTime& now)
{
    return {.period = period,
            .totals = summary.totals(period, now),
            .currentStreak = summary.currentStreak(now),
            .bestDay = summary.bestDay(),
            .dailyWords = summary.dailyWords(chartLength(period), now),
            .typingWordsPerMinute = typingWordsPerMinute,
            .calendar = summary.calendar()};
}

QJsonObject StatsReport::toJson() const
{
    QJsonArray days;
    for (const DailyStat& day : dailyWords)
        days.append(wordsOf(day, calendar));
    const auto speed = wordsPerMinute(totals);
    return {{QStringLiteral("period"), rawValue(period)},
            {QStringLiteral("dictations"), totals.dictations},
            {QStringLiteral("words"), totals.words},
            {QStringLiteral("characters"), totals.characters},
            {QStringLiteral("speechSeconds"), totals.speechSeconds},
            {QStringLiteral("activeDays"), totals.activeDays},
            {QStringLiteral("currentStreak"), currentStreak},
            {QStringLiteral("bestDay"), bestDay ? wordsOf(*bestDay, calendar) : QJsonValue()},
            {QStringLiteral("dailyWords"), days},
            {QStringLiteral("wordsPerMinute"), speed ? QJsonValue(*speed) : QJsonValue()},
            {QStringLiteral("typingSeconds"), typingSeconds(totals.words, typingWordsPerMinute)},
            {QStringLiteral("savedSeconds"),
             savedSeconds(totals.words, totals.speechSeconds, typingWordsPerMinute)}};
}

QString StatsReport::toText() const
{
    const double saved = savedSeconds(totals.words, totals.speechSeconds, typingWordsPerMinute);
    const double typing = typingSeconds(totals.words, typingWordsPerMinute);
    const auto duration = [](double seconds) { return formatDuration(seconds, Wording::english); };
    const QString best = bestDay
                             ? dateText(*bestDay, calendar) + QStringLiteral(", ") +
                                   counted(bestDay->words, QStringLiteral("word"), QStringLiteral("words"))
                             : QStringLiteral("–");
    const QList<std::pair<QString, QString>> lines{
        {QStringLiteral("Period"), englishTitle(period)},
        {QStringLiteral("Dictations"), count(totals.dictations)},
        {QStringLiteral("Words"), count(totals.words)},
        {QStringLiteral("Characters"), count(totals.characters)},
        {QStringLiteral("Words per dictation"), count(averageWords(totals))},
        {QStringLiteral("Speaking time"), duration(totals.speechSeconds)},
        {QStringLiteral("Speed"), speedText(totals, typingWordsPerMinute)},
        {QStringLiteral("Typing would take"), duration(typing)},
        {QStringLiteral("Time saved"), duration(saved)},
        {QStringLiteral("Active days"), activeDaysText(totals, period)},
        {QStringLiteral("Streak"), counted(currentStreak, QStringLiteral("day"), QStringLiteral("days"))},
        {QStringLiteral("Best day"), best}};
    QString text;
    for (const auto& [label, value] : lines)
        text += label.leftJustified(21) + value + u'\n';
    return text + chart(dailyWords, calendar);
}

} // namespace tulvane::cli
