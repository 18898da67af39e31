#pragma once

#include <QByteArray>
#include <QString>
#include <qlogging.h>

namespace tulvane::cli {

/// How much of the log a command writes to standard error.
enum class LogAmount { errorsOnly, everything };

/// Where the lines go: to readers, or to the system's journal, which takes each line's level from its start.
enum class LogReader { person, journal };

/// Who reads what is written to the file descriptor. `journalStream` is what the service manager says of the
/// journal's own, as in JOURNAL_STREAM: "DEVICE:INODE", empty where there is none.
[[nodiscard]] LogReader logReader(int descriptor, const QByteArray& journalStream);

/// One line of the log, with its end. `category` is the whole name.
[[nodiscard]] QByteArray logLine(QtMsgType level, const QByteArray& category, const QString& text,
                                 LogReader reader);

/// Installs the process's log writer: one line each on standard error. Main thread, before anything logs.
void writeLogToStandardError(LogAmount amount);

} // namespace tulvane::cli
