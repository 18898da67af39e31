#include <platform/linux/gnome/MutterRemoteDesktop.h>
#include <platform/linux/portal/PortalBackends.h>
#include <platform/linux/session/WaylandOffers.h>
#include <platform/linux/sway/SwayConnection.h>
#include <platform/linux/wayland/clipboard/DataControlProtocol.h>
#include <platform/linux/wayland/connection/WaylandConnection.h>

#include <QDBusConnection>
#include <QDBusConnectionInterface>

#include <map>
#include <memory>
#include <mutex>
#include <tuple>

namespace tulvane {

namespace {

/// Of the session bus that the environment names.
bool hasOwner(const QString& name, const QString& bus)
{
    const QString ours = qEnvironmentVariable("DBUS_SESSION_BUS_ADDRESS");
    const QString connectionName = QStringLiteral("tulvane-session-kind");
    const QDBusConnection connection = bus.isEmpty() || bus == ours
                                           ? QDBusConnection::sessionBus()
                                           : QDBusConnection::connectToBus(bus, connectionName);
    const bool isOwned = connection.isConnected() && connection.interface()->isServiceRegistered(name);
    if (connection.name() == connectionName)
        QDBusConnection::disconnectFromBus(connectionName);
    return isOwned;
}

WaylandOffers ask(const QProcessEnvironment& environment)
{
    WaylandOffers offers;
    const auto connection = WaylandConnection::open(WaylandConnection::socketOf(environment));
    if (!connection)
        return offers;
    const QString bus = environment.value(QStringLiteral("DBUS_SESSION_BUS_ADDRESS"));
    offers.compositorReached = true;
    offers.holdsClipboard = DataControlProtocol::isOffered(*connection);
    offers.virtualKeyboard = connection->offers("zwp_virtual_keyboard_manager_v1");
    offers.fakeInput = connection->offers("org_kde_kwin_fake_input");
    offers.layerShell = connection->offers("zwlr_layer_shell_v1");
    offers.sway = SwayConnection::answers(SwayConnection::socketOf(environment));
    offers.kwin = hasOwner(QStringLiteral("org.kde.KWin"), bus);
    offers.gnomeShell = hasOwner(QStringLiteral("org.gnome.Shell"), bus);
    offers.mutterRemoteControl = offers.gnomeShell && MutterRemoteDesktop::isOffered(bus);
    offers.remoteDesktopPortal = !offers.postsKeys() && !offers.mutterRemoteControl &&
                                 hasPortalBackend(QStringLiteral("RemoteDesktop"), environment);
    return offers;
}

} // namespace

const WaylandOffers& waylandOffers(const QProcessEnvironment& environment)
{
    static std::mutex guard;
    static std::map<std::tuple<QByteArray, QByteArray, QString>, WaylandOffers> known;
    const std::lock_guard lock(guard);
    const auto key =
        std::tuple(WaylandConnection::socketOf(environment), SwayConnection::socketOf(environment),
                   environment.value(QStringLiteral("DBUS_SESSION_BUS_ADDRESS")));
    const auto found = known.find(key);
    return found != known.end() ? found->second : known.emplace(key, ask(environment)).first->second;
}

} // namespace tulvane
