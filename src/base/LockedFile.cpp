#include <base/LockedFile.h>

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>

namespace tulvane {

namespace {

/// Whether the name still leads to the open file: its last owner may have taken the name away.
bool isNamed(int file, const QByteArray& name)
{
    struct stat open{};
    struct stat named{};
    return ::fstat(file, &open) == 0 && ::lstat(name.constData(), &named) == 0 &&
           open.st_dev == named.st_dev && open.st_ino == named.st_ino;
}

} // namespace

Result<int, int> openLocked(const QByteArray& name, WhenLocked whenLocked)
{
    const int operation = LOCK_EX | (whenLocked == WhenLocked::giveUp ? LOCK_NB : 0);
    for (;;) {
        const int file = ::open(name.constData(), O_RDWR | O_CREAT | O_CLOEXEC | O_NOFOLLOW, 0600);
        if (file < 0)
            return failure(int{errno});
        const int error = ::flock(file, operation) == 0 ? 0 : errno;
        if (error == 0 && isNamed(file, name))
            return file;
        ::close(file);
        if (error != 0 && error != EINTR)
            return failure(int{error});
    }
}

} // namespace tulvane
