#pragma once

#include <QList>
#include <QtGlobal>

namespace tulvane {

/// The scale at a chart's side: from 0 in round, equal steps to a top that nothing exceeds.
struct ChartAxis {
    double top = 0;
    QList<double> ticks; ///< ascending, 0 and the top included
};

/// The scale for values from 0 to `most`, of one to five steps; each is 1, 2 or 5 times a power of ten. A
/// chart of nothing has a scale too. Any thread.
[[nodiscard]] ChartAxis chartAxis(qint64 most);

} // namespace tulvane
