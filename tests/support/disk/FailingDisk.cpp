// Loaded before the C library, it is a disk that fails once: the call number TULVANE_TEST_FAILS_AT (from 1)
// of those that change files below TULVANE_TEST_DISK ends with the error TULVANE_TEST_ERROR. How many such
// calls there were stands in the file TULVANE_TEST_CALLS.
#include <dlfcn.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <atomic>
#include <cerrno>
#include <climits>
#include <cstdarg>
#include <cstdio>
#include <cstdlib>
#include <cstring>

namespace {

std::atomic<long> calls = 0;

const char* variable(const char* name)
{
    const char* const value = std::getenv(name);
    return value == nullptr ? "" : value;
}

bool isBelow(const char* path)
{
    static const char* const disk = variable("TULVANE_TEST_DISK");
    return *disk != '\0' && path != nullptr && std::strncmp(path, disk, std::strlen(disk)) == 0;
}

bool isOnDisk(int file)
{
    char link[32];
    char path[PATH_MAX];
    std::snprintf(link, sizeof link, "/proc/self/fd/%d", file);
    const ssize_t length = readlink(link, path, sizeof path - 1);
    if (length < 0)
        return false;
    path[length] = '\0';
    return isBelow(path);
}

/// Told after every call, since a process need not end in order.
void tell(long count)
{
    static const int file = static_cast<int>(syscall(SYS_openat, AT_FDCWD, variable("TULVANE_TEST_CALLS"),
                                                     O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0600));
    char text[16];
    const int length = std::snprintf(text, sizeof text, "%08ld\n", count);
    syscall(SYS_pwrite64, file, text, length, 0);
}

/// Whether this call is the one that fails; sets errno.
bool fails()
{
    static const long at = std::atol(variable("TULVANE_TEST_FAILS_AT"));
    const long number = ++calls;
    tell(number);
    if (number != at)
        return false;
    errno = std::atoi(variable("TULVANE_TEST_ERROR"));
    return true;
}

__attribute__((constructor)) void begin()
{
    tell(0);
}

} // namespace

#define EXPORTED extern "C" __attribute__((visibility("default")))

EXPORTED ssize_t write(int file, const void* data, size_t size)
{
    if (isOnDisk(file) && fails())
        return -1;
    return syscall(SYS_write, file, data, size);
}

EXPORTED int fsync(int file)
{
    if (isOnDisk(file) && fails())
        return -1;
    return static_cast<int>(syscall(SYS_fsync, file));
}

EXPORTED int fdatasync(int file)
{
    if (isOnDisk(file) && fails())
        return -1;
    return static_cast<int>(syscall(SYS_fdatasync, file));
}

EXPORTED int ftruncate(int file, off_t size)
{
    if (isOnDisk(file) && fails())
        return -1;
    return static_cast<int>(syscall(SYS_ftruncate, file, size));
}

EXPORTED int rename(const char* from, const char* to)
{
    if (isBelow(to) && fails())
        return -1;
    return static_cast<int>(syscall(SYS_renameat2, AT_FDCWD, from, AT_FDCWD, to, 0));
}

EXPORTED int mkdir(const char* path, mode_t mode)
{
    if (isBelow(path) && fails())
        return -1;
    return static_cast<int>(syscall(SYS_mkdirat, AT_FDCWD, path, mode));
}

EXPORTED int open(const char* path, int flags, ...)
{
    va_list more;
    va_start(more, flags);
    const mode_t mode = (flags & O_CREAT) != 0 ? va_arg(more, mode_t) : 0;
    va_end(more);
    if ((flags & (O_CREAT | O_WRONLY | O_RDWR)) != 0 && isBelow(path) && fails())
        return -1;
    return static_cast<int>(syscall(SYS_openat, AT_FDCWD, path, flags, mode));
}

EXPORTED int open64(const char* path, int flags, ...)
{
    va_list more;
    va_start(more, flags);
    const mode_t mode = (flags & O_CREAT) != 0 ? va_arg(more, mode_t) : 0;
    va_end(more);
    return open(path, flags | O_LARGEFILE, mode);
}
