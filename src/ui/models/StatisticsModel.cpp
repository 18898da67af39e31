#include <base/Clock.h>
#include <settings/AppSettings.h>
#include <stats/StatsStore.h>
#include <stats/StatsSummary.h>
#include <stats/StatsTexts.h>
#include <ui/models/CardList.h>
#include <ui/models/StatisticsModel.h>

#include <algorithm>
#include <limits>

namespace tulvane {

StatisticsModel::StatisticsModel(const UiContext& context, QObject* parent)
    : QObject(parent),
      m_context(context),
      m_chart(new WordsChartModel(this))
{
    connect(&m_context.stats, &StatsStore::daysChanged, this, &StatisticsModel::refresh);
    connect(&m_context.settings, &AppSettings::typingWordsPerMinuteChanged, this, &StatisticsModel::refresh);
    refresh();
}

void StatisticsModel::setPeriod(const QString& raw)
{
    m_period = statsPeriodFromRawValue(raw).value_or(m_period);
    refresh();
}

QVariantList StatisticsModel::periods()
{
    QVariantList list;
    for (const StatsPeriod period : allStatsPeriods)
        list.append(QVariantMap{{QStringLiteral("value"), rawValue(period)},
                                {QStringLiteral("title"), title(period)}});
    return list;
}

bool StatisticsModel::isEmpty() const
{
    return m_context.stats.days().isEmpty();
}

QVariantList StatisticsModel::cards() const
{
    return cardList(periodCards(StatsSummary(m_context.stats), m_period,
                                m_context.settings.typingWordsPerMinute(), m_context.clock.now()),
                    {QStringLiteral("text.bubble"), QStringLiteral("timer"), QStringLiteral("waveform"),
                     QStringLiteral("flame.fill")});
}

QVariantList StatisticsModel::details() const
{
    QVariantList list;
    for (const StatRow& row : detailRows(StatsSummary(m_context.stats), m_period,
                                         m_context.settings.typingWordsPerMinute(), m_context.clock.now()))
        list.append(QVariantMap{{QStringLiteral("label"), row.label}, {QStringLiteral("value"), row.value}});
    return list;
}

int StatisticsModel::typingSpeed() const
{
    constexpr qint64 most = std::numeric_limits<int>::max();
    return static_cast<int>(std::clamp(m_context.settings.typingWordsPerMinute(), qint64{0}, most));
}

void StatisticsModel::setTypingSpeed(int wordsPerMinute)
{
    m_context.settings.setTypingWordsPerMinute(std::clamp(wordsPerMinute, slowestTyping, fastestTyping));
}

QString StatisticsModel::typingSpeedLabel() const
{
    return tulvane::typingSpeedLabel(m_context.settings.typingWordsPerMinute());
}

void StatisticsModel::startOver()
{
    m_period = StatsPeriod::week;
    m_chart->clear();
    refresh();
}

void StatisticsModel::refresh()
{
    m_chart->show(StatsSummary(m_context.stats), chartLength(m_period),
                  m_context.settings.typingWordsPerMinute(), m_context.clock.now());
    Q_EMIT changed();
}

void StatisticsModel::reset()
{
    m_context.stats.reset();
}

} // namespace tulvane
