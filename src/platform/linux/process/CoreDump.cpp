#include <ports/CoreDump.h>

#include <fcntl.h>
#include <sys/resource.h>
#include <unistd.h>

namespace tulvane {

void leaveNoCoreDump()
{
    rlimit limit{};
    if (getrlimit(RLIMIT_CORE, &limit) == 0) {
        limit.rlim_cur = 0;
        setrlimit(RLIMIT_CORE, &limit);
    }
    // The limit does not hold where the kernel pipes dumps to a program. Which memory a dump has is a mask of
    // kinds (core(5)).
    const int filter = open("/proc/self/coredump_filter", O_WRONLY | O_CLOEXEC);
    if (filter < 0)
        return;
    // Where this is refused the limit is all that there is.
    [[maybe_unused]] const ssize_t written = write(filter, "0", 1);
    close(filter);
}

} // namespace tulvane
