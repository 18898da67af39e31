#pragma once

#include <app/cli/CommandLine.h>

#include <map>

namespace tulvane {

/// What runs each command of this program, wired to the real settings, models, folders and adapters. Nothing
/// is opened before a command runs. Main thread; needs the QCoreApplication.
[[nodiscard]] std::map<QString, cli::Run> programCommands();

} // namespace tulvane
