#include <base/Clock.h>
#include <settings/AppSettings.h>
#include <stats/StatsStore.h>
#include <stats/StatsSummary.h>
#include <stats/StatsTexts.h>
#include <ui/viewmodels/CardList.h>
#include <ui/viewmodels/StatisticsViewModel.h>

#include <algorithm>
#include <limits>

namespace tulvane {

StatisticsViewModel::StatisticsViewModel(AppSettings& settings, StatsStore& stats, const Clock& clock,
                                         QObject* parent)
    : QObject(parent),
      m_settings(settings),
      m_stats(stats),
      m_clock(clock),
      m_chart(new WordsChartViewModel(this))
{
    connect(&m_stats, &StatsStore::daysChanged, this, &StatisticsViewModel::refresh);
    connect(&m_settings.typingWordsPerMinute, &AnySetting::changed, this, &StatisticsViewModel::refresh);
    refresh();
}

void StatisticsViewModel::setPeriod(const QString& raw)
{
    m_period = statsPeriodFromRawValue(raw).value_or(m_period);
    refresh();
}

QVariantList StatisticsViewModel::periods()
{
    QVariantList list;
    for (const StatsPeriod period : allStatsPeriods)
        list.append(QVariantMap{{QStringLiteral("value"), rawValue(period)},
                                {QStringLiteral("title"), title(period)}});
    return list;
}

bool StatisticsViewModel::isEmpty() const
{
    return m_stats.days().isEmpty();
}

QVariantList StatisticsViewModel::cards() const
{
    return cardList(
        periodCards(StatsSummary(m_stats), m_period, m_settings.typingWordsPerMinute(), m_clock.now()),
        {QStringLiteral("text.bubble"), QStringLiteral("timer"), QStringLiteral("waveform"),
         QStringLiteral("flame.fill")});
}

QVariantList StatisticsViewModel::details() const
{
    QVariantList list;
    for (const StatRow& row :
         detailRows(StatsSummary(m_stats), m_period, m_settings.typingWordsPerMinute(), m_clock.now()))
        list.append(QVariantMap{{QStringLiteral("label"), row.label}, {QStringLiteral("value"), row.value}});
    return list;
}

int StatisticsViewModel::typingSpeed() const
{
    constexpr qint64 most = std::numeric_limits<int>::max();
    return static_cast<int>(std::clamp(m_settings.typingWordsPerMinute(), qint64{0}, most));
}

int StatisticsViewModel::slowestTyping() const
{
    return static_cast<int>(m_settings.typingWordsPerMinute.steps()->least);
}

int StatisticsViewModel::fastestTyping() const
{
    return static_cast<int>(m_settings.typingWordsPerMinute.steps()->most);
}

int StatisticsViewModel::typingStep() const
{
    return static_cast<int>(m_settings.typingWordsPerMinute.steps()->step);
}

void StatisticsViewModel::setTypingSpeed(int wordsPerMinute)
{
    m_settings.typingWordsPerMinute.set(std::clamp(wordsPerMinute, slowestTyping(), fastestTyping()));
}

QString StatisticsViewModel::typingSpeedLabel() const
{
    return tulvane::typingSpeedLabel(m_settings.typingWordsPerMinute());
}

void StatisticsViewModel::startOver()
{
    m_period = StatsPeriod::week;
    m_chart->clear();
    refresh();
}

void StatisticsViewModel::refresh()
{
    m_chart->show(StatsSummary(m_stats), chartLength(m_period), m_settings.typingWordsPerMinute(),
                  m_clock.now());
    Q_EMIT changed();
}

void StatisticsViewModel::reset()
{
    m_stats.reset();
}

} // namespace tulvane
