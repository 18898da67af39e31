#include <stats/SpeakingFigures.h>

#include <algorithm>
#include <cmath>
#include <limits>

namespace tulvane {

namespace {
constexpr double secondsPerMinute = 60;
}

std::optional<double> wordsPerMinute(const PeriodTotals& totals)
{
    if (totals.speechSeconds < 1)
        return std::nullopt;
    const double speed = static_cast<double>(totals.words) / (totals.speechSeconds / secondsPerMinute);
    return speed == 0 ? std::nullopt : std::optional(speed);
}

double typingSeconds(qint64 words, qint64 typingWordsPerMinute)
{
    if (typingWordsPerMinute < 1)
        return 0;
    return static_cast<double>(words) / static_cast<double>(typingWordsPerMinute) * secondsPerMinute;
}

double savedSeconds(qint64 words, double speechSeconds, qint64 typingWordsPerMinute)
{
    if (words < 1 || typingWordsPerMinute < 1)
        return 0;
    return std::max(0.0, typingSeconds(words, typingWordsPerMinute) - speechSeconds);
}

double speedFactor(double wordsPerMinute, qint64 typingWordsPerMinute)
{
    return wordsPerMinute / static_cast<double>(std::max(typingWordsPerMinute, qint64{1}));
}

qint64 averageWords(const PeriodTotals& totals)
{
    if (totals.dictations == 0)
        return 0;
    return rounded(static_cast<double>(totals.words) / static_cast<double>(totals.dictations));
}

qint64 rounded(double number)
{
    // 2^63 is the first number beyond; rounding it would be undefined.
    constexpr double beyond = 9223372036854775808.0;
    if (std::isnan(number))
        return 0;
    if (number >= beyond)
        return std::numeric_limits<qint64>::max();
    if (number < -beyond)
        return std::numeric_limits<qint64>::min();
    return std::llround(number);
}

} // namespace tulvane
