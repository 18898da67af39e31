#pragma once

#include <functional>

namespace tulvane {

/// What the system took from a thread. An older kernel, or another system, may take less.
struct Confinement {
    bool files = false; ///< it cannot open for writing, make, rename or remove any file or folder
    bool calls = false; ///< it can open no socket, start no program and look into no other process
};

/// Takes those rights from the thread that calls it and from every thread that it starts from then on, for
/// good. What is open already stays open, and reading stays possible. It bounds what a fault in a parser does
/// by mistake; memory is shared with the other threads, so it is no wall against code that has been taken
/// over.
using ConfineThread = std::function<Confinement()>;

} // namespace tulvane
