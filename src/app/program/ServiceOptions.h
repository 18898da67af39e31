#pragma once

#include <ports/ProgramServices.h>

namespace tulvane {

/// The services as this program's own folders and environment say. Needs the QCoreApplication; main thread.
[[nodiscard]] ServiceOptions serviceOptions();

} // namespace tulvane
