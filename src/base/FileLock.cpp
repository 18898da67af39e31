#include <base/FileLock.h>
#include <base/LockedFile.h>

#include <QDeadlineTimer>
#include <QFile>

#include <unistd.h>

#include <cerrno>
#include <thread>
#include <utility>

namespace tulvane {

namespace {
// A write holds the lock for about as long as one flush to disk.
constexpr std::chrono::milliseconds retryInterval{2};
} // namespace

bool LockError::isHeld() const
{
    return m_number == EBUSY;
}

QString LockError::reason() const
{
    return qt_error_string(m_number);
}

Result<FileLock, LockError> FileLock::acquire(const QString& path, std::chrono::milliseconds timeout)
{
    const QByteArray name = QFile::encodeName(path);
    const QDeadlineTimer deadline(timeout);
    for (;;) {
        const Result<int, int> file = openLocked(name, WhenLocked::giveUp);
        if (file)
            return FileLock(*file, name);
        if (file.error() != EWOULDBLOCK)
            return failure(LockError(file.error()));
        if (deadline.hasExpired())
            return failure(LockError(EBUSY));
        std::this_thread::sleep_for(retryInterval);
    }
}

FileLock::FileLock(FileLock&& other) noexcept
    : m_file(std::exchange(other.m_file, -1)),
      m_name(std::move(other.m_name))
{
}

FileLock::~FileLock()
{
    if (m_file < 0)
        return;
    // Before it lets go: another process that has the old file open sees that the name is another one's by
    // then.
    ::unlink(m_name.constData());
    ::close(m_file);
}

} // namespace tulvane
