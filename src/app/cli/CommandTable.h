#pragma once

#include <app/cli/CommandLine.h>

#include <map>
#include <vector>

namespace tulvane::cli {

/// Every command of the program with its summary, in the order of the overview. `runs` says what runs a
/// command; `others` gets, with its name in front of the arguments, each command that is not in there.
[[nodiscard]] std::vector<Command> commandTable(const std::map<QString, Run>& runs, const Run& others);

} // namespace tulvane::cli
