#pragma once

#include <cmath>
#include <cstddef>
#include <span>

namespace tulvane::test {

/// How alike two stretches of equal length are, -1 to 1; every `step`-th sample is looked at.
[[nodiscard]] inline double likeness(std::span<const float> one, std::span<const float> other,
                                     std::size_t step)
{
    double product = 0;
    double first = 0;
    double second = 0;
    for (std::size_t at = 0; at < other.size(); at += step) {
        const auto a = static_cast<double>(one[at]);
        const auto b = static_cast<double>(other[at]);
        product += a * b;
        first += a * a;
        second += b * b;
    }
    return first > 0 && second > 0 ? product / std::sqrt(first * second) : 0;
}

} // namespace tulvane::test
