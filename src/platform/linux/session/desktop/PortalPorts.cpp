#include <platform/linux/desktop/LastingBus.h>
#include <platform/linux/layout/ModifierKeys.h>
#include <platform/linux/portal/AppScope.h>
#include <platform/linux/portal/PortalBackends.h>
#include <platform/linux/portal/PortalHotkeys.h>
#include <platform/linux/portal/PortalRemoteDesktop.h>
#include <platform/linux/session/Session.h>
#include <platform/linux/session/desktop/PortalPorts.h>

namespace tulvane {

std::shared_ptr<GlobalHotkeys> portalHotkeys(const QProcessEnvironment& environment)
{
    // Keys go by the layout's names; without the compositor's own the usual ones are right for most.
    auto layout = XkbKeymap::fromNames({});
    if (!layout || !hasPortalBackend(QStringLiteral("GlobalShortcuts"), environment))
        return nullptr;
    return std::make_shared<PortalHotkeys>(LastingBus::session(), *std::move(layout));
}

std::shared_ptr<PortalRemoteDesktop> portalRemoteDesktop(const DesktopOptions& options)
{
    const Session& session = sessionOf(options.environment);
    if (!asksForKeys(session, options.environment))
        return nullptr;
    // KDE counts an "up" of any keyboard for all of them; GNOME does not.
    QList<quint32> letGo;
    if (session.kind == SessionKind::kde)
        letGo = QList<quint32>(modifierKeys.begin(), modifierKeys.end());
    return std::make_shared<PortalRemoteDesktop>(LastingBus::session(), options.defaults, letGo);
}

void introduceToPortals(const DesktopOptions& options)
{
    // A process without a program to start again is none that the user knows.
    if (!options.program.isEmpty())
        (void)joinAppScope(QDBusConnection::sessionBus(), QStringLiteral("com.dunio.Tulvane"));
}

} // namespace tulvane
