#include <base/AtomicFile.h>
#include <base/LockedFile.h>
#include <base/PrivateFolder.h>

#include <QFile>
#include <QFileInfo>
#include <QScopeGuard>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>

namespace tulvane {

namespace {

constexpr int mostLinks = 40; // as many as the kernel follows

qint64 nanoseconds(const timespec& time)
{
    return (qint64{time.tv_sec} * 1'000'000'000) + time.tv_nsec;
}

FileFault fault(int error)
{
    const bool missing = error == ENOENT || error == ENOTDIR;
    return {missing ? FileFault::Kind::missing : FileFault::Kind::other, qt_error_string(error)};
}

Result<QByteArray, FileFault> readAll(int file, qint64 limit)
{
    QByteArray content;
    char block[16384];
    for (;;) {
        const ssize_t count = ::read(file, block, sizeof block);
        if (count < 0 && errno == EINTR)
            continue;
        if (count < 0)
            return failure(fault(errno));
        if (count == 0)
            return content;
        content.append(block, count);
        if (content.size() > limit)
            return failure(fault(EFBIG));
    }
}

bool writeAll(int file, const QByteArray& content)
{
    if (::ftruncate(file, 0) != 0 || ::fchmod(file, 0600) != 0)
        return false;
    qsizetype written = 0;
    while (written < content.size()) {
        const ssize_t count =
            ::write(file, content.constData() + written, static_cast<size_t>(content.size() - written));
        if (count < 0 && errno != EINTR)
            return false;
        if (count > 0)
            written += count;
    }
    // A full disk may show itself only here.
    return ::fsync(file) == 0;
}

/// Brings the folder's names to the disk. The file is in place by now, so a refusal changes nothing.
void syncFolder(const QString& folder)
{
    const int descriptor = ::open(QFile::encodeName(folder).constData(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (descriptor < 0)
        return;
    (void)::fsync(descriptor);
    ::close(descriptor);
}

} // namespace

std::optional<dev_t> fileSystemOf(QString path)
{
    struct stat status = {};
    while (::stat(QFile::encodeName(path).constData(), &status) != 0) {
        const QString parent = QFileInfo(path).path();
        if (parent == path)
            return std::nullopt;
        path = parent;
    }
    return status.st_dev;
}

std::optional<FileStamp> fileStamp(const QString& path)
{
    struct stat state{};
    if (::stat(QFile::encodeName(path).constData(), &state) != 0)
        return std::nullopt;
    return FileStamp{state.st_dev, state.st_ino, state.st_size, nanoseconds(state.st_mtim),
                     nanoseconds(state.st_ctim)};
}

QString linkTarget(const QString& path)
{
    QString target = path;
    for (int links = 0; links < mostLinks; ++links) {
        const QFileInfo info(target);
        if (!info.isSymLink())
            break;
        target = info.symLinkTarget();
    }
    return target;
}

Result<QByteArray, FileFault> readFile(const QString& path, qint64 limit)
{
    const int file = ::open(QFile::encodeName(path).constData(), O_RDONLY | O_CLOEXEC | O_NONBLOCK);
    if (file < 0)
        return failure(fault(errno));
    const auto closing = qScopeGuard([file] { ::close(file); });
    struct stat state{};
    if (::fstat(file, &state) != 0)
        return failure(fault(errno));
    if (S_ISDIR(state.st_mode))
        return failure(fault(EISDIR));
    if (!S_ISREG(state.st_mode))
        return failure(fault(EINVAL));
    return readAll(file, limit);
}

Result<void, QString> replaceFile(const QString& path, const QByteArray& bytes)
{
    const QString target = linkTarget(path);
    const QString folder = QFileInfo(target).absolutePath();
    if (Result<void, QString> made = makePrivateFolder(folder); !made)
        return made;
    const QByteArray name = QFile::encodeName(target);
    const QByteArray fresh = name + ".new";
    // What a killed writer left is used up; another writer is at work no longer than the disk is.
    const Result<int, int> file = openLocked(fresh, WhenLocked::wait);
    if (!file)
        return failure(qt_error_string(file.error()));
    // Closing lets the next writer in: only once the name on the way is free again.
    const auto closing = qScopeGuard([&file] { ::close(*file); });
    if (!writeAll(*file, bytes) || std::rename(fresh.constData(), name.constData()) != 0) {
        const int error = errno;
        ::unlink(fresh.constData());
        return failure(qt_error_string(error));
    }
    syncFolder(folder);
    return {};
}

} // namespace tulvane
