#include <ui/viewmodels/ChartAxis.h>

#include <algorithm>
#include <array>
#include <cmath>

namespace tulvane {

namespace {

constexpr double mostSteps = 5;
/// What a chart without any value could have held: an ordinary day.
constexpr double ordinary = 100;

/// The smallest round number that reaches the value in at most five steps.
double roundStep(double most)
{
    for (double power = 1;; power *= 10) {
        for (const double factor : {1.0, 2.0, 5.0}) {
            if (factor * power * mostSteps >= most)
                return factor * power;
        }
    }
}

} // namespace

ChartAxis chartAxis(qint64 most)
{
    const double highest = most > 0 ? static_cast<double>(most) : ordinary;
    const double step = roundStep(highest);
    const int steps = std::max(1, static_cast<int>(std::ceil(highest / step)));
    ChartAxis axis{.top = steps * step, .ticks = {}};
    for (int i = 0; i <= steps; ++i)
        axis.ticks.append(i * step);
    return axis;
}

} // namespace tulvane
