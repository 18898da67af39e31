#pragma once

#include <ports/Confinement.h>

namespace tulvane {

/// A `ConfineThread` by Landlock and seccomp. Denied calls fail with EACCES. Takes well below a millisecond.
Confinement confineThread();

} // namespace tulvane
