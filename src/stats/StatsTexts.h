#pragma once

#include <stats/StatsSummary.h>

#include <QList>
#include <QString>

namespace tulvane {

// The texts that depend on the figures, in the user's language. Main thread, as `translate()`.

/// One figure on a card.
struct StatCard {
    QString title;
    QString value;
    QString subtitle; ///< may be empty

    [[nodiscard]] friend bool operator==(const StatCard&, const StatCard&) = default;
};

/// One line of the details.
struct StatRow {
    QString label;
    QString value;

    [[nodiscard]] friend bool operator==(const StatRow&, const StatRow&) = default;
};

/// What the home page shows, over all time.
[[nodiscard]] QList<StatCard> homeCards(const StatsSummary& summary, qint64 typingWordsPerMinute,
                                        const QDateTime& now);
/// What the statistics page shows for a period.
[[nodiscard]] QList<StatCard> periodCards(const StatsSummary& summary, StatsPeriod period,
                                          qint64 typingWordsPerMinute, const QDateTime& now);
/// The statistics page's details for a period; the best day is that of all time.
[[nodiscard]] QList<StatRow> detailRows(const StatsSummary& summary, StatsPeriod period,
                                        qint64 typingWordsPerMinute, const QDateTime& now);

/// Below the chart's title, and what a screen reader says of the chart; `days` is its length.
[[nodiscard]] QString chartCaption(int days);
[[nodiscard]] QString chartLabel(int days);
/// Speaking time and time saved of the day whose bar is selected.
[[nodiscard]] QString selectedDayLine(const DailyStat& day, qint64 typingWordsPerMinute);
/// The label of the typing-speed control, the number in Markdown's bold.
[[nodiscard]] QString typingSpeedLabel(qint64 typingWordsPerMinute);

} // namespace tulvane
