#include <platform/linux/process/ProcessMemory.h>

#include <QFile>

#include <sys/mman.h>
#include <sys/resource.h>
#include <unistd.h>

#include <algorithm>
#include <optional>

namespace tulvane {

namespace {

/// The number on the line that begins with the name: "MemAvailable:   123 kB", "inactive_file 123".
std::optional<qint64> field(const QByteArray& table, const char* name)
{
    for (const QByteArray& line : table.split('\n')) {
        if (!line.startsWith(name))
            continue;
        const QList<QByteArray> words = line.simplified().split(' ');
        bool isNumber = false;
        const qint64 value = words.value(1).toLongLong(&isNumber);
        if (isNumber && words.first() == name)
            return value;
    }
    return std::nullopt;
}

/// A file that holds one number; "max" (no limit) and an absent file give none.
std::optional<qint64> number(const QByteArray& content)
{
    bool isNumber = false;
    const qint64 value = content.trimmed().toLongLong(&isNumber);
    return isNumber ? std::optional(value) : std::nullopt;
}

qint64 leftOf(int resource, qint64 used)
{
    rlimit limit{};
    if (getrlimit(static_cast<__rlimit_resource>(resource), &limit) != 0 || limit.rlim_cur == RLIM_INFINITY)
        return SystemMemory::unlimited;
    return std::max<qint64>(0, static_cast<qint64>(limit.rlim_cur) - used);
}

} // namespace

/// Where each version of control groups keeps a group's limit, its use, and what of the use are file pages
/// that the kernel drops when memory is short.
struct ProcessMemory::GroupFiles {
    const char* folder;
    const char* limit;
    const char* used;
    const char* droppable;
};

const ProcessMemory::GroupFiles ProcessMemory::version2{"/sys/fs/cgroup", "/memory.max", "/memory.current",
                                                        "inactive_file"};
const ProcessMemory::GroupFiles ProcessMemory::version1{"/sys/fs/cgroup/memory", "/memory.limit_in_bytes",
                                                        "/memory.usage_in_bytes", "total_inactive_file"};

QByteArray ProcessMemory::contentOf(const QString& path) const
{
    QFile file(m_root + path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

qint64 ProcessMemory::available() const
{
    return std::min({leftOnMachine(), leftOfProcessLimits(), leftOfGroups()});
}

qint64 ProcessMemory::leftOnMachine() const
{
    const QByteArray table = contentOf(QStringLiteral("/proc/meminfo"));
    const std::optional<qint64> kilobytes = field(table, "MemAvailable:");
    if (!kilobytes)
        return unlimited;
    return (*kilobytes + field(table, "SwapFree:").value_or(0)) * 1024;
}

qint64 ProcessMemory::leftOfProcessLimits() const
{
    // Pages: total size, ..., data and stack as the sixth.
    const QList<QByteArray> pages = contentOf(QStringLiteral("/proc/self/statm")).simplified().split(' ');
    const qint64 pageSize = sysconf(_SC_PAGESIZE);
    return std::min(leftOf(RLIMIT_AS, pages.value(0).toLongLong() * pageSize),
                    leftOf(RLIMIT_DATA, pages.value(5).toLongLong() * pageSize));
}

qint64 ProcessMemory::leftOfGroup(const QString& folder, const GroupFiles& files) const
{
    const auto limit = number(contentOf(folder + QString::fromUtf8(files.limit)));
    const auto used = number(contentOf(folder + QString::fromUtf8(files.used)));
    if (!limit || !used)
        return unlimited;
    const qint64 droppable =
        field(contentOf(folder + QStringLiteral("/memory.stat")), files.droppable).value_or(0);
    return std::max<qint64>(0, *limit - *used + droppable);
}

qint64 ProcessMemory::leftOfGroups() const
{
    qint64 left = unlimited;
    const QString table = QString::fromUtf8(contentOf(QStringLiteral("/proc/self/cgroup")));
    for (const QString& line : table.split(u'\n', Qt::SkipEmptyParts)) {
        // "0::/user.slice/app" (version 2), "4:memory:/container/1234" (version 1)
        const bool isVersion2 = line.startsWith(u"0::");
        if (!isVersion2 && !line.section(u':', 1, 1).split(u',').contains(u"memory"))
            continue;
        const GroupFiles& files = isVersion2 ? version2 : version1;
        // From the group itself up to the root: each of them may limit.
        QString group = line.section(u':', 2);
        while (!group.isEmpty()) {
            group = group == u"/" ? QString() : group;
            left = std::min(left, leftOfGroup(QString::fromUtf8(files.folder) + group, files));
            group.truncate(std::max<qsizetype>(0, group.lastIndexOf(u'/')));
        }
        left = std::min(left, leftOfGroup(QString::fromUtf8(files.folder), files));
    }
    return left;
}

qint64 ProcessMemory::resident() const
{
    // In pages: the whole, and second what of it is in memory.
    const QList<QByteArray> pages = contentOf(QStringLiteral("/proc/self/statm")).simplified().split(' ');
    return pages.value(1).toLongLong() * sysconf(_SC_PAGESIZE);
}

bool ProcessMemory::canReserve(qint64 bytes) const
{
    if (bytes <= 0)
        return true;
    const auto size = static_cast<std::size_t>(bytes);
    void* const reserved = mmap(nullptr, size, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
    if (reserved == MAP_FAILED)
        return false;
    munmap(reserved, size);
    return true;
}

} // namespace tulvane
