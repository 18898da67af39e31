#include <support/wayland/selections/SelectionCompositor.h>

#include <sys/eventfd.h>
#include <sys/prctl.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

#include <csignal>
#include <cstring>
#include <future>

namespace tulvane::test {

namespace {

constexpr int patience = 60000;

int listenAt(const QByteArray& path)
{
    const int socket = ::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0);
    sockaddr_un address{.sun_family = AF_UNIX, .sun_path = {}};
    std::memcpy(address.sun_path, path.constData(), static_cast<std::size_t>(path.size()));
    if (::bind(socket, reinterpret_cast<const sockaddr*>(&address), sizeof address) != 0 ||
        ::listen(socket, 16) != 0)
        qFatal("no socket at %s", path.constData());
    return socket;
}

} // namespace

SelectionCompositor::SelectionCompositor(const Options& options)
    : m_options(options),
      m_environment(QProcessEnvironment::systemEnvironment()),
      m_display(wl_display_create()),
      m_server(std::make_unique<SelectionServer>(m_display, options.wlrVersion)),
      m_wake(eventfd(0, EFD_CLOEXEC))
{
    m_environment.insert(QStringLiteral("XDG_RUNTIME_DIR"), m_folder.path());
    m_environment.insert(QStringLiteral("WAYLAND_DISPLAY"), m_folder.file(QStringLiteral("wayland")));
    wl_display_add_socket_fd(m_display, listenAt(m_folder.file(QStringLiteral("wayland")).toLocal8Bit()));
    wl_display_set_global_filter(
        m_display,
        [](const wl_client* client, const wl_global* global, void* data) {
            return static_cast<const SelectionCompositor*>(data)->isShown(client, global);
        },
        this);
    m_waking = wl_event_loop_add_fd(
        wl_display_get_event_loop(m_display), m_wake, WL_EVENT_READABLE,
        [](int descriptor, std::uint32_t, void* data) {
            eventfd_t count = 0;
            eventfd_read(descriptor, &count);
            static_cast<SelectionCompositor*>(data)->m_work();
            return 0;
        },
        this);
    m_thread = std::thread([this] {
        // A client that goes in the middle of an event is no end of the process.
        sigset_t brokenPipe;
        sigemptyset(&brokenPipe);
        sigaddset(&brokenPipe, SIGPIPE);
        pthread_sigmask(SIG_BLOCK, &brokenPipe, nullptr);
        wl_display_run(m_display);
    });
}

SelectionCompositor::~SelectionCompositor()
{
    stop();
    close(m_wake);
}

bool SelectionCompositor::isShown(const wl_client* client, const wl_global* global) const
{
    pid_t process = 0;
    // It is not changed; the library's call has the word in the wrong place.
    wl_client_get_credentials(const_cast<wl_client*>(client), &process, nullptr, nullptr);
    const std::set<Protocol> shown = process == getpid() ? m_options.ours : std::set{Protocol::wlr};
    for (const Protocol protocol : {Protocol::ext, Protocol::wlr}) {
        if (m_server && global == m_server->global(protocol))
            return shown.contains(protocol);
    }
    return true;
}

void SelectionCompositor::inThread(const std::function<void(SelectionServer&)>& work)
{
    std::promise<void> done;
    m_work = [&] {
        work(*m_server);
        done.set_value();
    };
    eventfd_write(m_wake, 1);
    done.get_future().wait();
}

void SelectionCompositor::stop()
{
    if (!m_display)
        return;
    for (const auto& program : m_programs) {
        program->kill();
        program->waitForFinished();
    }
    m_programs.clear();
    inThread([this](SelectionServer&) { wl_display_terminate(m_display); });
    m_thread.join();
    wl_event_source_remove(m_waking);
    wl_display_destroy_clients(m_display);
    wl_display_destroy(std::exchange(m_display, nullptr));
}

QProcess& SelectionCompositor::start(const QString& program, const QStringList& arguments)
{
    QProcess& process = *m_programs.emplace_back(std::make_unique<QProcess>());
    process.setProcessEnvironment(m_environment);
    process.setWorkingDirectory(home());
    process.setChildProcessModifier([] { ::prctl(PR_SET_PDEATHSIG, SIGTERM); });
    process.start(program, arguments);
    if (!process.waitForStarted())
        qFatal("%s did not start", qPrintable(program));
    return process;
}

QByteArray SelectionCompositor::run(const QString& program, const QStringList& arguments)
{
    QProcess& process = start(program, arguments);
    if (!process.waitForFinished(patience) || process.exitCode() != 0)
        qFatal("%s failed: %s", qPrintable(program), process.readAllStandardError().constData());
    const QByteArray output = process.readAllStandardOutput();
    m_programs.pop_back();
    return output;
}

void SelectionCompositor::addSeat()
{
    inThread([](SelectionServer& server) { server.addSeat(); });
}

void SelectionCompositor::removeSeat()
{
    inThread([](SelectionServer& server) { server.removeSeat(); });
}

void SelectionCompositor::announceBothAtOnce()
{
    inThread([](SelectionServer& server) { server.announceBothAtOnce(); });
}

int SelectionCompositor::bindings(Protocol protocol)
{
    int count = 0;
    inThread([&](SelectionServer& server) { count = server.bindings(protocol); });
    return count;
}

int SelectionCompositor::offers()
{
    int count = 0;
    inThread([&](SelectionServer& server) { count = server.offers(); });
    return count;
}

} // namespace tulvane::test
