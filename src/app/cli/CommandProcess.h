#pragma once

#include <app/cli/CommandLine.h>

#include <functional>
#include <map>

namespace tulvane::cli {

/// The whole of an executable that runs commands: makes the QCoreApplication, reads the arguments and runs
/// what `runs` has for them; `others` gets every other command, its name in front of its arguments, and
/// `start` the arguments without a command. `runs` is called once the application object exists. Ends the
/// process.
[[noreturn]] void runCommandProcess(int argc, char** argv,
                                    const std::function<std::map<QString, Run>()>& runs, const Run& others,
                                    const Run& start);

} // namespace tulvane::cli
