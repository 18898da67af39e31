#pragma once

#include <app/cli/Console.h>

namespace tulvane {

/// Runs the resident program until it is asked to end, and returns its exit status. A second start hands over
/// to the first and ends at once. `page` is the page that the first is to show; may be empty. Main thread.
[[nodiscard]] int runResidentProgram(const QString& page, cli::Console& console);

} // namespace tulvane
