#pragma once

#include <app/cli/CommandLine.h>

#include <vector>

namespace tulvane {

/// The commands of this program, wired to the real settings, models and folders. Nothing is opened before a
/// command runs. Main thread; needs the QCoreApplication.
[[nodiscard]] std::vector<cli::Command> programCommands();

/// Becomes the program that runs on the desktop; returns, with a status, only when the words are wrong or it
/// cannot be started.
[[nodiscard]] int startProgram(const QStringList& arguments, cli::Console& console);

} // namespace tulvane
