#pragma once

#include <cstdlib>
#include <memory>

namespace tulvane {

/// Frees what the X library allocated.
struct XcbFree {
    void operator()(void* memory) const { std::free(memory); } // NOLINT: allocated by malloc
};

/// A reply or an event of the X server; null where there was an error.
template <class T>
using XcbReply = std::unique_ptr<T, XcbFree>;

} // namespace tulvane
