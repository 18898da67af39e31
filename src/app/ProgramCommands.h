#pragma once

#include <app/cli/CommandLine.h>

#include <vector>

namespace tulvane {

/// The commands of this program, wired to the real settings, models and folders. Nothing is opened before a
/// command runs. Main thread; needs the QCoreApplication.
[[nodiscard]] std::vector<cli::Command> programCommands();

} // namespace tulvane
