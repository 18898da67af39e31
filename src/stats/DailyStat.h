#pragma once

#include <QDateTime>

namespace tulvane {

/// The counters of one calendar day. A plain value; equality compares all five fields.
struct DailyStat {
    QDateTime date; ///< the day's first moment in the store's calendar
    qint64 dictations = 0;
    qint64 words = 0;
    qint64 characters = 0;    ///< as a reader counts them
    double speechSeconds = 0; ///< seconds of recorded speech

    /// Adds the other's counters to these; the date stays. False, with nothing changed, when a counter would
    /// not fit into 64 bits.
    [[nodiscard]] bool add(const DailyStat& other);

    [[nodiscard]] friend bool operator==(const DailyStat&, const DailyStat&) = default;
};

} // namespace tulvane
