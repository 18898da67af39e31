#include <platform/linux/sway/ProgramWatch.h>

#include <QDir>
#include <QFileInfo>
#include <QTimer>

#include <sys/inotify.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <array>
#include <chrono>

namespace tulvane {

namespace {

using std::chrono::milliseconds;

/// A file is opened before its program runs, and a busy machine takes its time in between.
constexpr std::array looks{milliseconds(20), milliseconds(100), milliseconds(400), milliseconds(1500)};

} // namespace

struct ProgramWatch::Process {
    explicit Process(int number) : handle(number), end(number, QSocketNotifier::Read) {}
    Process(const Process&) = delete;
    Process& operator=(const Process&) = delete;
    ~Process()
    {
        end.setEnabled(false);
        close(handle);
    }

    int handle;
    QSocketNotifier end;
};

ProgramWatch::ProgramWatch(QStringList names, const QStringList& folders) : m_names(std::move(names))
{
    watch(folders);
    look();
}

ProgramWatch::~ProgramWatch()
{
    m_running.clear();
    m_openings.reset();
    if (m_files >= 0)
        close(m_files);
}

void ProgramWatch::watch(const QStringList& folders)
{
    m_files = inotify_init1(IN_CLOEXEC | IN_NONBLOCK);
    if (m_files < 0)
        return;
    for (const QString& folder : folders) {
        for (const QString& name : m_names)
            inotify_add_watch(m_files, QFile::encodeName(folder + u'/' + name).constData(), IN_OPEN);
    }
    m_openings = std::make_unique<QSocketNotifier>(m_files, QSocketNotifier::Read);
    connect(m_openings.get(), &QSocketNotifier::activated, this, &ProgramWatch::opened);
}

void ProgramWatch::opened()
{
    std::array<char, 4096> events{};
    while (read(m_files, events.data(), events.size()) > 0) {
    }
    for (const milliseconds after : looks)
        QTimer::singleShot(after, this, &ProgramWatch::look);
}

void ProgramWatch::look()
{
    const bool before = isRunning();
    const QStringList processes =
        QDir(QStringLiteral("/proc")).entryList({QStringLiteral("[0-9]*")}, QDir::Dirs);
    for (const QString& number : processes) {
        const QString folder = QStringLiteral("/proc/") + number;
        const pid_t process = number.toInt();
        QFile name(folder + QStringLiteral("/comm"));
        if (m_running.contains(process) || QFileInfo(folder).ownerId() != geteuid() ||
            !name.open(QIODevice::ReadOnly) || !m_names.contains(QString::fromUtf8(name.readAll().trimmed())))
            continue;
        const auto handle = static_cast<int>(syscall(SYS_pidfd_open, process, 0));
        if (handle < 0)
            continue;
        const auto& watched = m_running[process] = std::make_unique<Process>(handle);
        connect(&watched->end, &QSocketNotifier::activated, this, [this, process] { ended(process); });
    }
    if (isRunning() != before)
        Q_EMIT changed();
}

void ProgramWatch::ended(pid_t process)
{
    const auto found = m_running.find(process);
    if (found == m_running.end())
        return;
    // Its notifier is what calls this.
    found->second->end.setEnabled(false);
    QMetaObject::invokeMethod(
        this, [gone = std::shared_ptr<Process>(std::move(found->second))] {}, Qt::QueuedConnection);
    m_running.erase(found);
    // One that goes into the background leaves a child.
    look();
    if (!isRunning())
        Q_EMIT changed();
}

} // namespace tulvane
