#pragma once

#include <base/Result.h>
#include <stats/DailyStat.h>

#include <QByteArray>
#include <QList>
#include <QString>

#include <optional>

namespace tulvane {

/// The statistics file's text: one JSON object on one line, keys in sorted order, dates in UTC to the second.
/// Fails, with the reason, when a number is not finite or a date lies outside the years 1 to 9999, which the
/// format cannot hold. Any thread.
[[nodiscard]] Result<QByteArray, QString> encodeStatistics(const QList<DailyStat>& days);

/// The days as they stand in the file, in its order, unmerged, dates in UTC; nothing when the bytes are not
/// such a file. Whatever number "version" holds is accepted, and so are keys that we do not know and dates
/// with another offset. Any thread.
[[nodiscard]] std::optional<QList<DailyStat>> decodeStatistics(const QByteArray& bytes);

} // namespace tulvane
