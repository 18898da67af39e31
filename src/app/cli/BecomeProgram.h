#pragma once

#include <app/cli/Console.h>

#include <QStringList>

namespace tulvane::cli {

/// Replaces this process by the executable `file`; returns, with a status, only when it cannot be started.
[[nodiscard]] int becomeProgram(const QString& file, const QStringList& arguments, Console& console);

} // namespace tulvane::cli
