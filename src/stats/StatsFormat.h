#pragma once

#include <QDate>
#include <QLocale>
#include <QString>

namespace tulvane {

/// Whose words a text is made of: the user's, or English, which the command line speaks.
enum class Wording { user, english };

/// A duration in short: seconds below a minute ("59 s"), then minutes, cut ("12 min"), then hours and minutes
/// ("1 h 5 min", "2 h"). Takes seconds.
[[nodiscard]] QString formatDuration(double seconds, Wording wording = Wording::user);

/// A count with the locale's digit grouping.
[[nodiscard]] QString formatCount(qint64 count, const QLocale& locale = QLocale());

/// A factor with one fraction digit in the locale's writing.
[[nodiscard]] QString formatFactor(double factor, const QLocale& locale = QLocale());

/// A day's date in the locale's short writing.
[[nodiscard]] QString formatDay(QDate date, const QLocale& locale = QLocale());

} // namespace tulvane
