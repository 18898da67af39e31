#pragma once

#include <stats/StatsSummary.h>

#include <optional>

namespace tulvane {

/// Words per minute while speaking, unrounded; none below one second of speech or without words. Any thread,
/// as everything here.
[[nodiscard]] std::optional<double> wordsPerMinute(const PeriodTotals& totals);

/// Seconds that typing the words would take; 0 where the typing speed is below 1.
[[nodiscard]] double typingSeconds(qint64 words, qint64 typingWordsPerMinute);

/// Seconds saved against typing: what typing would take less the time spent speaking, never negative; 0
/// without words or with a typing speed below 1.
[[nodiscard]] double savedSeconds(qint64 words, double speechSeconds, qint64 typingWordsPerMinute);

/// How many times faster than typing that speed is, unrounded. A typing speed below 1 counts as 1.
[[nodiscard]] double speedFactor(double wordsPerMinute, qint64 typingWordsPerMinute);

/// Words per dictation, rounded; 0 without dictations.
[[nodiscard]] qint64 averageWords(const PeriodTotals& totals);

/// The nearest integer, halves away from zero; the nearest that 64 bits hold where there is none.
[[nodiscard]] qint64 rounded(double number);

} // namespace tulvane
