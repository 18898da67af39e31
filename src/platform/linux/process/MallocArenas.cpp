#include <platform/linux/process/MallocArenas.h>

#include <malloc.h>

namespace tulvane {

void useOneHeap()
{
#ifdef M_ARENA_MAX // glibc alone has more than one
    mallopt(M_ARENA_MAX, 1);
#endif
}

} // namespace tulvane
