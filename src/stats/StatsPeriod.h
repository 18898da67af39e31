#pragma once

#include <QString>

#include <array>
#include <optional>

namespace tulvane {

/// What the figures are summed over.
enum class StatsPeriod { today, week, month, all };

/// In the order of the picker.
inline constexpr std::array allStatsPeriods{StatsPeriod::today, StatsPeriod::week, StatsPeriod::month,
                                            StatsPeriod::all};

/// "today", "week", "month", "all".
[[nodiscard]] QString rawValue(StatsPeriod period);
[[nodiscard]] std::optional<StatsPeriod> statsPeriodFromRawValue(const QString& raw);
/// For the user, translated.
[[nodiscard]] QString title(StatsPeriod period);
/// The same in English, for the command line.
[[nodiscard]] QString englishTitle(StatsPeriod period);
/// Calendar days counted, today included; 0 means no limit.
[[nodiscard]] int daysInPeriod(StatsPeriod period);
/// Bars of the chart beside the period's figures.
[[nodiscard]] int chartLength(StatsPeriod period);

} // namespace tulvane
