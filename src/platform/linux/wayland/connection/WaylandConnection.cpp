#include <base/Log.h>
#include <platform/linux/wayland/connection/WaylandConnection.h>

#include <QCoreApplication>
#include <QDir>

#include <sys/socket.h>

#include <algorithm>
#include <utility>

namespace tulvane {

QByteArray WaylandConnection::socketOf(const QProcessEnvironment& environment)
{
    const QString name = environment.value(QStringLiteral("WAYLAND_DISPLAY"));
    const QString folder = environment.value(QStringLiteral("XDG_RUNTIME_DIR"));
    if (name.isEmpty() || QDir::isAbsolutePath(name))
        return name.toLocal8Bit();
    return folder.isEmpty() ? QByteArray() : QDir(folder).filePath(name).toLocal8Bit();
}

std::unique_ptr<WaylandConnection> WaylandConnection::open(const QByteArray& socket)
{
    if (socket.isEmpty() || !WaylandLibrary::isThere())
        return nullptr;
    wl_display* const display = WaylandLibrary::functions().displayConnect(socket.constData());
    if (!display)
        return nullptr;
    std::unique_ptr<WaylandConnection> connection(new WaylandConnection(display));
    connection->catchUp();
    return connection->isBroken() ? nullptr : std::move(connection);
}

WaylandConnection::WaylandConnection(wl_display* display)
    : m_library(WaylandLibrary::functions()),
      m_display(display),
      m_registry(wl_display_get_registry(display))
{
    static const wl_registry_listener events{
        [](void* data, wl_registry*, std::uint32_t name, const char* interface, std::uint32_t version) {
            auto& connection = *static_cast<WaylandConnection*>(data);
            connection.m_globals.push_back({name, interface, version});
            Q_EMIT connection.appeared(connection.m_globals.back());
        },
        [](void* data, wl_registry*, std::uint32_t name) {
            auto& connection = *static_cast<WaylandConnection*>(data);
            connection.remove(name);
            Q_EMIT connection.disappeared(name);
        }};
    wl_registry_add_listener(m_registry, &events, this);
    // What the session offers is asked for before there is an application.
    if (!QCoreApplication::instance())
        return;
    m_readable = std::make_unique<QSocketNotifier>(m_library.displayGetFd(display), QSocketNotifier::Read);
    connect(m_readable.get(), &QSocketNotifier::activated, this, &WaylandConnection::readSocket);
}

WaylandConnection::~WaylandConnection()
{
    m_readable.reset();
    if (m_seat)
        wl_seat_destroy(m_seat);
    wl_registry_destroy(m_registry);
    m_library.displayDisconnect(m_display);
}

const WaylandConnection::Global* WaylandConnection::find(const char* interface) const
{
    const auto found = std::ranges::find(m_globals, QByteArray(interface), &Global::interface);
    return found == m_globals.end() ? nullptr : &*found;
}

void* WaylandConnection::bindGlobal(const Global* global, const wl_interface& interface,
                                    std::uint32_t highestVersion)
{
    if (!global)
        return nullptr;
    return wl_registry_bind(m_registry, global->name, &interface, std::min(global->version, highestVersion));
}

wl_seat* WaylandConnection::seat()
{
    const Global* const global = m_seat ? nullptr : find(wl_seat_interface.name);
    if (global) {
        m_seatName = global->name;
        m_seat = bind<wl_seat>(*global, wl_seat_interface, 1);
    }
    return m_seat;
}

void WaylandConnection::dropSeat()
{
    if (m_seat)
        remove(m_seatName);
}

void WaylandConnection::remove(std::uint32_t name)
{
    std::erase_if(m_globals, [=](const Global& global) { return global.name == name; });
    if (m_seat && m_seatName == name)
        wl_seat_destroy(std::exchange(m_seat, nullptr));
}

void WaylandConnection::flush()
{
    m_library.displayFlush(m_display);
}

void WaylandConnection::catchUp()
{
    if (m_library.displayRoundtrip(m_display) < 0)
        noticeEnd();
}

bool WaylandConnection::isBroken() const
{
    return m_library.displayGetError(m_display) != 0;
}

int WaylandConnection::compositorProcess() const
{
    ucred peer{};
    socklen_t size = sizeof peer;
    const int answer = getsockopt(m_library.displayGetFd(m_display), SOL_SOCKET, SO_PEERCRED, &peer, &size);
    return answer == 0 ? peer.pid : 0;
}

void WaylandConnection::readSocket()
{
    while (m_library.displayPrepareRead(m_display) != 0) {
        if (m_library.displayDispatchPending(m_display) < 0) {
            noticeEnd();
            return;
        }
    }
    m_library.displayFlush(m_display);
    const bool isRead = m_library.displayReadEvents(m_display) == 0;
    if (!isRead || m_library.displayDispatchPending(m_display) < 0)
        noticeEnd();
    else
        m_library.displayFlush(m_display);
}

void WaylandConnection::noticeEnd()
{
    if (m_hasEnded)
        return;
    m_hasEnded = true;
    if (m_readable)
        m_readable->setEnabled(false);
    qCWarning(lcApp, "The Wayland compositor has ended the connection (error %d)",
              m_library.displayGetError(m_display));
    // Not from within a call that may have been made on this very stack.
    QMetaObject::invokeMethod(this, &WaylandConnection::closed, Qt::QueuedConnection);
}

} // namespace tulvane
