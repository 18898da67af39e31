#include <base/Translate.h>
#include <stats/StatsPeriod.h>

#include <QCoreApplication>

#include <algorithm>

namespace tulvane {

namespace {

struct Facts {
    const char* raw;
    const char* title;
    int days;
    int bars;
};

constexpr std::array<Facts, allStatsPeriods.size()> table{{
    {"today", QT_TRANSLATE_NOOP("tulvane", "Today"), 1, 14},
    {"week", QT_TRANSLATE_NOOP("tulvane", "7 days"), 7, 14},
    {"month", QT_TRANSLATE_NOOP("tulvane", "30 days"), 30, 30},
    {"all", QT_TRANSLATE_NOOP("tulvane", "All time"), 0, 30},
}};

const Facts& factsOf(StatsPeriod period)
{
    return table.at(static_cast<std::size_t>(period));
}

} // namespace

QString rawValue(StatsPeriod period)
{
    return QString::fromLatin1(factsOf(period).raw);
}

std::optional<StatsPeriod> statsPeriodFromRawValue(const QString& raw)
{
    const auto* const found =
        std::ranges::find_if(allStatsPeriods, [&](StatsPeriod period) { return rawValue(period) == raw; });
    return found == allStatsPeriods.end() ? std::nullopt : std::optional(*found);
}

QString title(StatsPeriod period)
{
    return translate(factsOf(period).title);
}

QString englishTitle(StatsPeriod period)
{
    return QString::fromUtf8(factsOf(period).title);
}

int daysInPeriod(StatsPeriod period)
{
    return factsOf(period).days;
}

int chartLength(StatsPeriod period)
{
    return factsOf(period).bars;
}

} // namespace tulvane
