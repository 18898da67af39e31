#pragma once

#include <app/cli/LaunchOptions.h>

namespace tulvane {

/// Runs the resident program until it is asked to end, and returns its exit status. A second start hands over
/// to the first and ends at once. Main thread.
[[nodiscard]] int runResidentProgram(const cli::LaunchOptions& words, cli::Console& console);

} // namespace tulvane
