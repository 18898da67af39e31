#pragma once

#include <stats/StatsSummary.h>

#include <QDate>
#include <QObject>
#include <QVariantList>
#include <QtQml/qqmlregistration.h>

#include <optional>

namespace tulvane {

/// The chart of words per day: its bars, its scale, and which day is selected. Main thread.
class WordsChartViewModel final : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("made by the program")
    Q_PROPERTY(int count READ count NOTIFY changed)
    /// Oldest first, today last; objects with `words` (a number), `figure` (the same in words), `label` (for
    /// the axis), `day` (short, with its weekday), `name` (for a screen reader) and `isToday`.
    Q_PROPERTY(QVariantList bars READ bars NOTIFY changed)
    /// Ascending from 0; objects with `value` and `label`.
    Q_PROPERTY(QVariantList ticks READ ticks NOTIFY changed)
    Q_PROPERTY(double top READ top NOTIFY changed)
    Q_PROPERTY(QString caption READ caption NOTIFY changed)
    Q_PROPERTY(QString label READ label NOTIFY changed)
    /// The selected bar; -1 when there is none. Then the three texts are empty.
    Q_PROPERTY(int selected READ selected NOTIFY selectionChanged)
    Q_PROPERTY(QString selectedDay READ selectedDay NOTIFY selectionChanged)
    Q_PROPERTY(QString selectedWords READ selectedWords NOTIFY selectionChanged)
    Q_PROPERTY(QString selectedLine READ selectedLine NOTIFY selectionChanged)

public:
    explicit WordsChartViewModel(QObject* parent) : QObject(parent) {}

    /// Shows the last `length` days before and with `now`. The selected day stays selected while it is shown.
    void show(const StatsSummary& summary, int length, qint64 typingWordsPerMinute, const QDateTime& now);

    [[nodiscard]] int count() const { return static_cast<int>(m_days.size()); }
    [[nodiscard]] QVariantList bars() const;
    [[nodiscard]] QVariantList ticks() const;
    [[nodiscard]] double top() const;
    [[nodiscard]] QString caption() const;
    [[nodiscard]] QString label() const;
    [[nodiscard]] int selected() const;
    [[nodiscard]] QString selectedDay() const;
    [[nodiscard]] QString selectedWords() const;
    [[nodiscard]] QString selectedLine() const;

    /// Selects the bar; the selected one is given up, and so is any other by a bar that there is not.
    Q_INVOKABLE void select(int bar);
    Q_INVOKABLE void clear() { select(-1); }

Q_SIGNALS:
    void changed();
    void selectionChanged();

private:
    struct Day {
        DailyStat stat;
        QDate date;
    };

    [[nodiscard]] qint64 mostWords() const;
    [[nodiscard]] const Day* chosen() const;

    QList<Day> m_days;
    std::optional<QDate> m_selected;
    qint64 m_typingSpeed = 0;
};

} // namespace tulvane
