#include <platform/linux/wayland/clipboard/PipeHolders.h>

#include <QByteArray>
#include <QFile>
#include <QList>

#include <dirent.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <sys/types.h>
#include <unistd.h>

#include <array>
#include <memory>

namespace tulvane {

namespace {

constexpr int longestAncestry = 64;
constexpr int mostLooks = 4;
using Folder = std::unique_ptr<DIR, int (*)(DIR*)>;

/// Whether the process has the end for reading.
bool holds(quint32 process, const QByteArray& pipeName)
{
    const QByteArray path =
        QByteArrayLiteral("/proc/") + QByteArray::number(process) + QByteArrayLiteral("/fd");
    const Folder folder(opendir(path.constData()), closedir);
    if (!folder)
        return false;
    std::array<char, 64> link{};
    while (const dirent* const entry = readdir(folder.get())) {
        const ssize_t size = readlinkat(dirfd(folder.get()), entry->d_name, link.data(), link.size());
        if (size <= 0 || QByteArrayView(link.data(), size) != pipeName)
            continue;
        // The rights of the link are the file's: the end for writing is one that is still on its way to us.
        struct stat about{};
        if (fstatat(dirfd(folder.get()), entry->d_name, &about, AT_SYMLINK_NOFOLLOW) == 0 &&
            (about.st_mode & S_IRUSR) != 0)
            return true;
    }
    return false;
}

/// 0 where only we hold it, as far as we may look.
quint32 otherHolder(const QByteArray& pipeName)
{
    const Folder folder(opendir("/proc"), closedir);
    const auto own = static_cast<quint32>(getpid());
    while (const dirent* const entry = folder ? readdir(folder.get()) : nullptr) {
        const quint32 process = QByteArray(entry->d_name).toUInt();
        if (process != 0 && process != own && holds(process, pipeName))
            return process;
    }
    return 0;
}

/// The parent and the group of a process.
std::pair<quint32, quint32> parentAndGroup(quint32 process)
{
    QFile file(QStringLiteral("/proc/%1/stat").arg(process));
    if (!file.open(QIODevice::ReadOnly))
        return {};
    // The name in brackets may have blanks and brackets in it; then come the state, the parent and the group.
    const QByteArray stat = file.readAll();
    const QList<QByteArray> fields = stat.mid(stat.lastIndexOf(')') + 2).split(' ');
    return fields.size() < 3 ? std::pair<quint32, quint32>()
                             : std::pair(fields[1].toUInt(), fields[2].toUInt());
}

/// Whether the process was started by that program, or is in the process group that it leads.
bool belongsTo(quint32 process, quint32 program)
{
    auto [parent, group] = parentAndGroup(process);
    if (group == program)
        return true;
    for (int step = 0; parent > 1 && step < longestAncestry; ++step) {
        if (parent == program)
            return true;
        parent = parentAndGroup(parent).first;
    }
    return false;
}

} // namespace

PipeHolders::Reader PipeHolders::readerOf(int pipe, const Target& target)
{
    struct stat about{};
    if (target.process == 0 || fstat(pipe, &about) != 0 || !S_ISFIFO(about.st_mode))
        return Reader::unknown;
    const QByteArray name = QByteArrayLiteral("pipe:[") + QByteArray::number(about.st_ino) + ']';
    // A reader may hand the pipe to a process that it starts, and that is not in a list read before: again
    // then.
    for (int look = 0; look < mostLooks; ++look) {
        if (holds(target.process, name) || (target.isX11 && holds(target.compositor, name)))
            return Reader::target;
        const quint32 reader = otherHolder(name);
        if (reader != 0)
            return belongsTo(reader, target.process) ? Reader::target : Reader::other;
    }
    return Reader::unknown;
}

} // namespace tulvane
