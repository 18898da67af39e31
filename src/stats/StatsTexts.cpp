#include <base/Translate.h>
#include <stats/SpeakingFigures.h>
#include <stats/StatsFormat.h>
#include <stats/StatsTexts.h>

namespace tulvane {

namespace {

/// In place of a figure that there is none of.
QString none()
{
    return QStringLiteral("–");
}

QString activeDaysInTotal(const PeriodTotals& totals)
{
    return translate("%1 active days in total").arg(totals.activeDays);
}

QString streakEncouragement(qint64 streak, const PeriodTotals& allTime)
{
    if (streak == 0)
        return translate("Dictate today to start a streak");
    if (streak == 1)
        return translate("One day down, many more ahead");
    return streak < 7 ? translate("Keep it going all week") : activeDaysInTotal(allTime);
}

StatCard speedCard(const PeriodTotals& totals, qint64 typingSpeed)
{
    const auto speed = wordsPerMinute(totals);
    if (!speed)
        return {translate("Average speed"), none(), translate("Measured from your dictations")};
    return {translate("Average speed"), translate("%1 WPM").arg(rounded(*speed)),
            translate("That's %1× faster than typing").arg(formatFactor(speedFactor(*speed, typingSpeed)))};
}

QString savedDuration(qint64 words, double speechSeconds, qint64 typingSpeed)
{
    return formatDuration(savedSeconds(words, speechSeconds, typingSpeed));
}

StatCard wordsCard(const PeriodTotals& totals, qint64 typingSpeed)
{
    const QString saved = savedDuration(totals.words, totals.speechSeconds, typingSpeed);
    return {translate("Total words dictated"), formatCount(totals.words),
            totals.words < 1 ? translate("Your first words land here")
                             : translate("%1 saved vs. typing").arg(saved)};
}

QString activity(const PeriodTotals& totals, StatsPeriod period)
{
    if (period == StatsPeriod::all)
        return activeDaysInTotal(totals);
    return translate("%1 of %2 days active").arg(totals.activeDays).arg(daysInPeriod(period));
}

QString wordsText(qint64 words)
{
    return translate("%1 words").arg(words);
}

} // namespace

QList<StatCard> homeCards(const StatsSummary& summary, qint64 typingWordsPerMinute, const QDateTime& now)
{
    const PeriodTotals totals = summary.totals(StatsPeriod::all, now);
    const qint64 streak = summary.currentStreak(now);
    return {{translate("Daily streak"), formatCount(streak), streakEncouragement(streak, totals)},
            speedCard(totals, typingWordsPerMinute),
            wordsCard(totals, typingWordsPerMinute)};
}

QList<StatCard> periodCards(const StatsSummary& summary, StatsPeriod period, qint64 typingWordsPerMinute,
                            const QDateTime& now)
{
    const PeriodTotals totals = summary.totals(period, now);
    const auto speed = wordsPerMinute(totals);
    return {{translate("Words dictated"), formatCount(totals.words), QString()},
            {translate("Time saved"), savedDuration(totals.words, totals.speechSeconds, typingWordsPerMinute),
             translate("vs. typing at %1 words/min").arg(typingWordsPerMinute)},
            {translate("Speaking time"), formatDuration(totals.speechSeconds),
             speed ? translate("%1 words/min").arg(rounded(*speed)) : none()},
            {translate("Streak"), formatCount(summary.currentStreak(now)), activity(totals, period)}};
}

QList<StatRow> detailRows(const StatsSummary& summary, StatsPeriod period, qint64 typingWordsPerMinute,
                          const QDateTime& now)
{
    const PeriodTotals totals = summary.totals(period, now);
    const auto best = summary.bestDay();
    const QString bestDay = best ? formatDay(summary.calendar().dateOf(best->date)) + QStringLiteral(" · ") +
                                       wordsText(best->words)
                                 : none();
    return {{translate("Average per dictation"), wordsText(averageWords(totals))},
            {translate("Characters"), formatCount(totals.characters)},
            {translate("Typing the same text would take"),
             formatDuration(typingSeconds(totals.words, typingWordsPerMinute))},
            {translate("Best day"), bestDay}};
}

QString chartCaption(int days)
{
    return translate("Last %1 days").arg(days);
}

QString chartLabel(int days)
{
    return translate("Bar chart of words dictated per day for the last %1 days").arg(days);
}

QString selectedDayLine(const DailyStat& day, qint64 typingWordsPerMinute)
{
    return translate("%1 speaking · saved %2")
        .arg(formatDuration(day.speechSeconds),
             savedDuration(day.words, day.speechSeconds, typingWordsPerMinute));
}

QString typingSpeedLabel(qint64 typingWordsPerMinute)
{
    return translate("My typing speed: **%1** words/min").arg(typingWordsPerMinute);
}

} // namespace tulvane
