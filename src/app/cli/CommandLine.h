#pragma once

#include <app/cli/Console.h>

#include <QStringList>

#include <functional>
#include <vector>

namespace tulvane::cli {

/// One word after "tulvane".
struct Command {
    QString name;
    QString summary;
    /// Gets the arguments after the name; returns the exit status.
    std::function<int(const QStringList& arguments, Console& console)> run;
};

/// Runs the command that the arguments (without the program's own name) begin with. Without one, or with one
/// that is unknown, says so on `err` and returns `wrongUsage`; `--help` and `--version` alone are answered
/// for the program.
[[nodiscard]] int runCommandLine(const QStringList& arguments, const std::vector<Command>& commands,
                                 Console& console);

} // namespace tulvane::cli
