#pragma once

#include <stats/StatsPeriod.h>
#include <ui/viewmodels/WordsChartViewModel.h>

#include <QObject>
#include <QVariantList>
#include <QtQml/qqmlregistration.h>

namespace tulvane {

class AppSettings;
class Clock;
class StatsStore;

/// The statistics page: the figures of a period, the chart of its days, and the typing speed that the
/// estimates rest on. Main thread.
class StatisticsViewModel final : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("made by the program")
    /// The period's raw value, as QML reads and sets it; an unknown one changes nothing.
    Q_PROPERTY(QString period READ period WRITE setPeriod NOTIFY changed)
    /// Objects with `value` and `title`, in the picker's order.
    Q_PROPERTY(QVariantList periods READ periods CONSTANT)
    /// Nothing has ever been counted.
    Q_PROPERTY(bool isEmpty READ isEmpty NOTIFY changed)
    /// Objects with `title`, `value`, `subtitle` and `symbol`.
    Q_PROPERTY(QVariantList cards READ cards NOTIFY changed)
    /// Objects with `label` and `value`.
    Q_PROPERTY(QVariantList details READ details NOTIFY changed)
    Q_PROPERTY(tulvane::WordsChartViewModel* chart READ chart CONSTANT)
    /// Words per minute. Setting it keeps to what the control offers; what is stored may lie beyond.
    Q_PROPERTY(int typingSpeed READ typingSpeed WRITE setTypingSpeed NOTIFY changed)
    /// In Markdown.
    Q_PROPERTY(QString typingSpeedLabel READ typingSpeedLabel NOTIFY changed)
    Q_PROPERTY(int slowestTyping READ slowestTyping CONSTANT)
    Q_PROPERTY(int fastestTyping READ fastestTyping CONSTANT)
    Q_PROPERTY(int typingStep READ typingStep CONSTANT)

public:
    /// All collaborators outlive this object.
    StatisticsViewModel(AppSettings& settings, StatsStore& stats, const Clock& clock, QObject* parent);

    [[nodiscard]] QString period() const { return rawValue(m_period); }
    void setPeriod(const QString& raw);
    [[nodiscard]] static QVariantList periods();
    [[nodiscard]] bool isEmpty() const;
    [[nodiscard]] QVariantList cards() const;
    [[nodiscard]] QVariantList details() const;
    [[nodiscard]] WordsChartViewModel* chart() const { return m_chart; }
    [[nodiscard]] int typingSpeed() const;
    void setTypingSpeed(int wordsPerMinute);
    [[nodiscard]] int slowestTyping() const;
    [[nodiscard]] int fastestTyping() const;
    [[nodiscard]] int typingStep() const;
    [[nodiscard]] QString typingSpeedLabel() const;

    /// As a page that has just been built shows it: the last seven days, nothing selected.
    Q_INVOKABLE void startOver();
    /// Reads the clock again: which day is today depends on it.
    Q_INVOKABLE void refresh();
    /// Deletes all counters. The page has asked.
    Q_INVOKABLE void reset();

Q_SIGNALS:
    void changed();

private:
    AppSettings& m_settings;
    StatsStore& m_stats;
    const Clock& m_clock;
    StatsPeriod m_period = StatsPeriod::week;
    WordsChartViewModel* m_chart;
};

} // namespace tulvane
