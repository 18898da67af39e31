#pragma once

namespace tulvane {

/// Makes all threads allocate from one heap; to be called before the first of them starts.
///
/// The C library gives each thread a heap of its own, which grows by a system call for every 4 KB. The
/// engine's thread allocates half a million small blocks when it loads a model; in the common heap that takes
/// half as long.
void useOneHeap();

} // namespace tulvane
