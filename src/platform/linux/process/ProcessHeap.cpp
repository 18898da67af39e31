#include <ports/ProcessHeap.h>

#include <malloc.h>

namespace tulvane {

// The C library gives each thread a heap of its own, which grows by a system call for every 4 KB. The
// engine's thread allocates half a million small blocks when it loads a model; in the common heap that takes
// half as long.
void useOneHeap()
{
#ifdef M_ARENA_MAX // glibc alone has more than one
    mallopt(M_ARENA_MAX, 1);
#endif
}

} // namespace tulvane
