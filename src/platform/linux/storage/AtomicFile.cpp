#include <platform/linux/storage/AtomicFile.h>

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

} // namespace

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

Result<void, QString> replaceFileDurably(const QString& path, const QByteArray& content)
{
    const QByteArray name = QFile::encodeName(path);
    const QByteArray fresh = name + ".new";
    // What a killed writer left is ours to use up; a link that somebody put there is not followed.
    const int file = ::open(fresh.constData(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC | O_NOFOLLOW, 0600);
    if (file < 0)
        return failure(qt_error_string(errno));
    const bool stored = ::fchmod(file, 0600) == 0 && writeAll(file, content);
    int error = stored ? 0 : errno;
    if (::close(file) != 0 && error == 0)
        error = errno;
    if (error == 0 && std::rename(fresh.constData(), name.constData()) != 0)
        error = errno;
    if (error == 0)
        return {};
    ::unlink(fresh.constData());
    return failure(qt_error_string(error));
}

} // namespace tulvane
