#include <support/VirtualDesktop.h>

#include <QDeadlineTimer>
#include <QDir>

#include <poll.h>
#include <sys/prctl.h>

#include <csignal>
#include <cstdlib>
#include <cstring>
#include <ranges>
#include <stdexcept>

namespace tulvane::test {

namespace {

constexpr int startTimeout = 30000;

[[noreturn]] void fail(const QString& what)
{
    throw std::runtime_error(what.toStdString());
}

QByteArray firstLine(QProcess& process)
{
    const QDeadlineTimer deadline(startTimeout);
    while (!process.canReadLine()) {
        if (deadline.hasExpired() || !process.waitForReadyRead(static_cast<int>(deadline.remainingTime())))
            fail(process.program() + QStringLiteral(" did not say that it is ready: ") +
                 QString::fromUtf8(process.readAllStandardError()));
    }
    return process.readLine().trimmed();
}

} // namespace

VirtualDesktop::VirtualDesktop() : VirtualDesktop(Options{}) {}

VirtualDesktop::VirtualDesktop(const Options& options)
    : m_environment(QProcessEnvironment::systemEnvironment())
{
    for (const char* foreign :
         {"WAYLAND_DISPLAY", "DBUS_SESSION_BUS_ADDRESS", "XDG_CURRENT_DESKTOP", "XDG_SESSION_TYPE",
          "SESSION_MANAGER", "XDG_SESSION_ID", "AT_SPI_BUS_ADDRESS", "QT_QPA_PLATFORM", "QT_STYLE_OVERRIDE",
          "QT_QPA_PLATFORMTHEME", "QT_IM_MODULE", "GTK_IM_MODULE", "XMODIFIERS", "GTK_MODULES"})
        m_environment.remove(QString::fromUtf8(foreign));
    const QString runtime = m_folder.file(QStringLiteral("run"));
    QDir().mkpath(runtime);
    QFile::setPermissions(runtime, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    m_environment.insert(QStringLiteral("HOME"), home());
    m_environment.insert(QStringLiteral("XDG_RUNTIME_DIR"), runtime);
    m_environment.insert(QStringLiteral("XDG_CONFIG_HOME"), m_folder.file(QStringLiteral(".config")));
    m_environment.insert(QStringLiteral("XDG_DATA_HOME"), m_folder.file(QStringLiteral(".local/share")));
    m_environment.insert(QStringLiteral("XDG_CACHE_HOME"), m_folder.file(QStringLiteral(".cache")));

    // Nothing of the system's own reaches a test; a test's login manager is on its session bus.
    m_environment.insert(QStringLiteral("DBUS_SYSTEM_BUS_ADDRESS"), QStringLiteral("disabled:"));
    startServer();
    if (!options.busAddress.isEmpty())
        m_environment.insert(QStringLiteral("DBUS_SESSION_BUS_ADDRESS"), options.busAddress);
    if (options.sessionBus == SessionBus::own)
        startSessionBus();
    if (options.windowManager == WindowManager::openbox)
        startOpenbox(options.openboxKeys);
}

VirtualDesktop::~VirtualDesktop()
{
    for (const auto& process : m_processes | std::views::reverse)
        stop(*process);
}

void VirtualDesktop::startServer()
{
    // The server looks for a free display itself, and names it when it is ready for clients.
    QProcess& server = start(QStringLiteral("Xvfb"),
                             {QStringLiteral("-displayfd"), QStringLiteral("1"), QStringLiteral("-screen"),
                              QStringLiteral("0"), QStringLiteral("1280x800x24"), QStringLiteral("-nolisten"),
                              QStringLiteral("tcp"), QStringLiteral("-noreset")});
    m_display = QLatin1Char(':') + QString::fromLatin1(firstLine(server));
    m_environment.insert(QStringLiteral("DISPLAY"), m_display);
}

void VirtualDesktop::startSessionBus()
{
    QProcess& bus = start(QStringLiteral("dbus-daemon"),
                          {QStringLiteral("--session"), QStringLiteral("--nofork"),
                           QStringLiteral("--nopidfile"), QStringLiteral("--print-address=1")});
    const QString address = QString::fromLatin1(firstLine(bus));
    m_environment.insert(QStringLiteral("DBUS_SESSION_BUS_ADDRESS"), address);
    m_environment.insert(QStringLiteral("DBUS_SYSTEM_BUS_ADDRESS"), address);
}

void VirtualDesktop::startOpenbox(const QByteArray& keys)
{
    const QString configuration = m_folder.write(
        QStringLiteral("openbox.xml"), "<?xml version=\"1.0\"?>\n"
                                       "<openbox_config xmlns=\"http://openbox.org/3.4/rc\"><keyboard>" +
                                           keys + "</keyboard></openbox_config>\n");
    // It runs the command once it manages the windows and holds its keys.
    QProcess& openbox =
        start(QStringLiteral("openbox"), {QStringLiteral("--config-file"), configuration,
                                          QStringLiteral("--startup"), QStringLiteral("echo ready")});
    (void)firstLine(openbox);
}

QProcess& VirtualDesktop::start(const QString& program, const QStringList& arguments)
{
    auto process = std::make_unique<QProcess>();
    process->setProcessEnvironment(m_environment);
    // A test that is killed leaves nothing running behind.
    process->setChildProcessModifier([] { prctl(PR_SET_PDEATHSIG, SIGKILL); });
    process->start(program, arguments);
    if (!process->waitForStarted(startTimeout))
        fail(program + QStringLiteral(": ") + process->errorString());
    m_processes.push_back(std::move(process));
    return *m_processes.back();
}

QByteArray VirtualDesktop::run(const QString& program, const QStringList& arguments) const
{
    QProcess process;
    process.setProcessEnvironment(m_environment);
    process.start(program, arguments);
    if (!process.waitForFinished(startTimeout) || process.exitStatus() != QProcess::NormalExit ||
        process.exitCode() != 0)
        fail(program + QStringLiteral(": ") + process.errorString() +
             QString::fromUtf8(process.readAllStandardError()));
    return process.readAllStandardOutput();
}

void VirtualDesktop::setKeyboardLayout(const QString& layout) const
{
    run(QStringLiteral("setxkbmap"), {layout});
}

void VirtualDesktop::killServer()
{
    QProcess& server = *m_processes.front();
    server.kill();
    server.waitForFinished(startTimeout);
}

void VirtualDesktop::stop(QProcess& process) const
{
    if (process.state() == QProcess::NotRunning)
        return;
    process.terminate();
    if (!process.waitForFinished(2000)) {
        process.kill();
        process.waitForFinished(startTimeout);
    }
}

} // namespace tulvane::test
