#pragma once

namespace tulvane {

/// Makes all threads allocate from one heap, where the system gives each thread a heap of its own. To be
/// called before the first thread starts.
void useOneHeap();

} // namespace tulvane
