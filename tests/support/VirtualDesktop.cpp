#include <support/VirtualDesktop.h>

#include <QDeadlineTimer>
#include <QDir>

#include <poll.h>
#include <sys/prctl.h>
#include <xcb/xcb.h>

#include <csignal>
#include <cstdlib>
#include <cstring>
#include <ranges>
#include <stdexcept>

namespace tulvane::test {

namespace {

constexpr int startTimeout = 30000;

struct Freed {
    void operator()(void* memory) const { std::free(memory); } // NOLINT: xcb hands out malloc'ed memory
};
template <class T>
using Reply = std::unique_ptr<T, Freed>;

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

/// A connection that waits for a property of the root window to appear.
class RootWatch final {
public:
    explicit RootWatch(const QString& display)
        : m_connection(xcb_connect(display.toLocal8Bit().constData(), nullptr))
    {
        if (xcb_connection_has_error(m_connection) != 0)
            fail(QStringLiteral("no connection to the display ") + display);
        m_root = xcb_setup_roots_iterator(xcb_get_setup(m_connection)).data->root;
        const quint32 mask = XCB_EVENT_MASK_PROPERTY_CHANGE;
        xcb_change_window_attributes(m_connection, m_root, XCB_CW_EVENT_MASK, &mask);
    }
    RootWatch(const RootWatch&) = delete;
    RootWatch& operator=(const RootWatch&) = delete;
    ~RootWatch() { xcb_disconnect(m_connection); }

    void awaitProperty(const char* name)
    {
        const auto cookie = xcb_intern_atom(m_connection, 0, static_cast<quint16>(std::strlen(name)), name);
        const Reply<xcb_intern_atom_reply_t> atom(xcb_intern_atom_reply(m_connection, cookie, nullptr));
        const QDeadlineTimer deadline(startTimeout);
        while (!has(atom->atom)) {
            pollfd descriptor{xcb_get_file_descriptor(m_connection), POLLIN, 0};
            if (deadline.hasExpired() ||
                poll(&descriptor, 1, static_cast<int>(deadline.remainingTime())) == 0)
                fail(QStringLiteral("the window manager did not come up"));
            while (const Reply<xcb_generic_event_t> event{xcb_poll_for_event(m_connection)}) {
            }
        }
    }

private:
    [[nodiscard]] bool has(xcb_atom_t atom) const
    {
        const auto cookie = xcb_get_property(m_connection, 0, m_root, atom, XCB_ATOM_ANY, 0, 1);
        const Reply<xcb_get_property_reply_t> reply(xcb_get_property_reply(m_connection, cookie, nullptr));
        return reply && reply->type != XCB_ATOM_NONE;
    }

    xcb_connection_t* m_connection;
    xcb_window_t m_root = XCB_WINDOW_NONE;
};

} // namespace

VirtualDesktop::VirtualDesktop() : VirtualDesktop(Options{}) {}

VirtualDesktop::VirtualDesktop(const Options& options)
    : m_environment(QProcessEnvironment::systemEnvironment())
{
    for (const char* foreign : {"WAYLAND_DISPLAY", "DBUS_SESSION_BUS_ADDRESS", "XDG_CURRENT_DESKTOP",
                                "XDG_SESSION_TYPE", "SESSION_MANAGER", "AT_SPI_BUS_ADDRESS"})
        m_environment.remove(QString::fromUtf8(foreign));
    const QString runtime = m_folder.file(QStringLiteral("run"));
    QDir().mkpath(runtime);
    QFile::setPermissions(runtime, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    m_environment.insert(QStringLiteral("HOME"), home());
    m_environment.insert(QStringLiteral("XDG_RUNTIME_DIR"), runtime);
    m_environment.insert(QStringLiteral("XDG_CONFIG_HOME"), m_folder.file(QStringLiteral(".config")));
    m_environment.insert(QStringLiteral("XDG_DATA_HOME"), m_folder.file(QStringLiteral(".local/share")));
    m_environment.insert(QStringLiteral("XDG_CACHE_HOME"), m_folder.file(QStringLiteral(".cache")));

    startServer();
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
    m_environment.insert(QStringLiteral("DBUS_SESSION_BUS_ADDRESS"), QString::fromLatin1(firstLine(bus)));
}

void VirtualDesktop::startOpenbox(const QByteArray& keys)
{
    const QString configuration = m_folder.write(
        QStringLiteral("openbox.xml"), "<?xml version=\"1.0\"?>\n"
                                       "<openbox_config xmlns=\"http://openbox.org/3.4/rc\"><keyboard>" +
                                           keys + "</keyboard></openbox_config>\n");
    start(QStringLiteral("openbox"), {QStringLiteral("--config-file"), configuration});
    RootWatch(m_display).awaitProperty("_NET_SUPPORTING_WM_CHECK");
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
