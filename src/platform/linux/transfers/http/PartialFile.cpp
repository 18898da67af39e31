#include <platform/linux/transfers/http/PartialFile.h>

#include <QFile>

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <sys/statvfs.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <limits>
#include <utility>

namespace tulvane::transfers {

namespace {

// Pages are handed to the disk in pieces of this size while more is arriving, so that the flush at the end
// finds little left to do. The call does not wait.
constexpr qint64 pushEvery = 16LL * 1024 * 1024;

TransferError writeError(int reason)
{
    if (reason == ENOSPC || reason == EDQUOT || reason == EFBIG)
        return TransferError(TransferError::Kind::noSpace);
    return TransferError(TransferError::Kind::notWritten, QString::fromLocal8Bit(std::strerror(reason)));
}

} // namespace

PartialFile::PartialFile(PartialFile&& other) noexcept
    : m_descriptor(std::exchange(other.m_descriptor, -1)),
      m_size(other.m_size),
      m_position(other.m_position),
      m_pushed(other.m_pushed)
{
}

PartialFile& PartialFile::operator=(PartialFile&& other) noexcept
{
    std::swap(m_descriptor, other.m_descriptor);
    std::swap(m_size, other.m_size);
    std::swap(m_position, other.m_position);
    std::swap(m_pushed, other.m_pushed);
    return *this;
}

PartialFile::~PartialFile()
{
    if (m_descriptor >= 0)
        ::close(m_descriptor);
}

Result<PartialFile, TransferError> PartialFile::open(const QString& path)
{
    constexpr mode_t onlyTheUser = 0600;
    PartialFile file;
    file.m_descriptor =
        ::open(QFile::encodeName(path).constData(), O_RDWR | O_CREAT | O_CLOEXEC | O_NOFOLLOW, onlyTheUser);
    if (file.m_descriptor < 0)
        return failure(writeError(errno));
    if (::flock(file.m_descriptor, LOCK_EX | LOCK_NB) != 0)
        return failure(TransferError(TransferError::Kind::alreadyRunning));
    struct stat status{};
    if (::fstat(file.m_descriptor, &status) != 0)
        return failure(writeError(errno));
    file.m_size = file.m_position = file.m_pushed = status.st_size;
    return file;
}

Result<void, TransferError> PartialFile::cutTo(qint64 size)
{
    if (::ftruncate(m_descriptor, size) != 0)
        return failure(writeError(errno));
    m_size = m_position = m_pushed = size;
    return {};
}

Result<void, TransferError> PartialFile::write(std::span<const std::byte> bytes)
{
    while (!bytes.empty()) {
        const ssize_t written = ::pwrite(m_descriptor, bytes.data(), bytes.size(), m_position);
        if (written < 0 && errno == EINTR)
            continue;
        if (written < 0)
            return failure(writeError(errno));
        bytes = bytes.subspan(static_cast<std::size_t>(written));
        m_position += written;
        m_size = std::max(m_size, m_position);
    }
    if (m_position - m_pushed >= pushEvery) {
        ::sync_file_range(m_descriptor, m_pushed, m_position - m_pushed, SYNC_FILE_RANGE_WRITE);
        m_pushed = m_position;
    }
    return {};
}

Result<void, TransferError> PartialFile::flushToDisk()
{
    if (::fsync(m_descriptor) != 0)
        return failure(writeError(errno));
    return {};
}

qint64 PartialFile::freeSpace() const
{
    struct statvfs status{};
    // What can't be asked must not stop a download; a failing write still does.
    if (::fstatvfs(m_descriptor, &status) != 0)
        return std::numeric_limits<qint64>::max();
    return static_cast<qint64>(status.f_bavail) * static_cast<qint64>(status.f_frsize);
}

} // namespace tulvane::transfers
