#pragma once

namespace tulvane::cli {

/// How much of the log a command writes to standard error.
enum class LogAmount { errorsOnly, everything };

/// Installs the process's log writer: one line each on standard error. Main thread, before anything logs.
void writeLogToStandardError(LogAmount amount);

} // namespace tulvane::cli
