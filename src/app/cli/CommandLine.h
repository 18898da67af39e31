#pragma once

#include <app/cli/Console.h>

#include <QStringList>

#include <functional>
#include <vector>

namespace tulvane::cli {

/// Gets the arguments that are its own; returns the exit status.
using Run = std::function<int(const QStringList& arguments, Console& console)>;

/// One word after "tulvane".
struct Command {
    QString name;
    QString summary;
    Run run;
};

/// Runs the command that the arguments (without the program's own name) begin with. Without one, or with an
/// option in its place, `start` runs with all of them: that starts the program. An unknown command is said on
/// `err` and returns `wrongUsage`; `--help` and `--version` alone are answered for the program.
[[nodiscard]] int runCommandLine(const QStringList& arguments, const std::vector<Command>& commands,
                                 const Run& start, Console& console);

} // namespace tulvane::cli
