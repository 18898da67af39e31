#include <platform/linux/storage/FileLock.h>

#include <QDeadlineTimer>
#include <QFile>

#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

#include <cerrno>
#include <thread>
#include <utility>

namespace tulvane {

namespace {
// A write holds the lock for about as long as one flush to disk.
constexpr std::chrono::milliseconds retryInterval{2};
} // namespace

Result<FileLock, QString> FileLock::acquire(const QString& path, std::chrono::milliseconds timeout)
{
    const int file =
        ::open(QFile::encodeName(path).constData(), O_RDWR | O_CREAT | O_CLOEXEC | O_NOFOLLOW, 0600);
    if (file < 0)
        return failure(qt_error_string(errno));
    FileLock lock(file);
    const QDeadlineTimer deadline(timeout);
    while (::flock(file, LOCK_EX | LOCK_NB) != 0) {
        const int error = errno;
        if (error != EWOULDBLOCK && error != EINTR)
            return failure(qt_error_string(error));
        if (deadline.hasExpired())
            return failure(qt_error_string(EBUSY));
        std::this_thread::sleep_for(retryInterval);
    }
    return lock;
}

FileLock::FileLock(FileLock&& other) noexcept : m_file(std::exchange(other.m_file, -1)) {}

FileLock::~FileLock()
{
    if (m_file >= 0)
        ::close(m_file);
}

} // namespace tulvane
