#include <platform/linux/evdev/EvdevModifierEvents.h>
#include <platform/linux/session/DisplayCheck.h>
#include <platform/linux/session/Session.h>
#include <platform/linux/session/desktop/GnomePorts.h>
#include <platform/linux/session/desktop/KdePorts.h>
#include <platform/linux/session/desktop/NullPorts.h>
#include <platform/linux/session/desktop/PortalPorts.h>
#include <platform/linux/session/desktop/SharedPorts.h>
#include <platform/linux/session/desktop/SwayPorts.h>
#include <platform/linux/session/desktop/X11Ports.h>
#include <ports/OpenDesktop.h>

#include <algorithm>
#include <array>

namespace tulvane {

namespace {

/// How the desktop of a kind of session is made.
struct DesktopKind {
    SessionKind kind;
    /// By the toolkit's name for it; null where the session shows no windows.
    const char* windowSystem;
    /// Fills what such a session has besides what all have; the rest becomes null ports.
    Result<void, Obstacle> (*fill)(Desktop& desktop, const DesktopOptions& options,
                                   const DesktopParts& parts);
};

Result<void, Obstacle> fillWithNothing(Desktop& /*desktop*/, const DesktopOptions& /*options*/,
                                       const DesktopParts& /*parts*/)
{
    return {};
}

constexpr std::array kinds{
    DesktopKind{SessionKind::x11, "xcb", fillWithX11Ports},
    // The clipboard and the indicator go over X11, and so do the windows: one world.
    DesktopKind{SessionKind::gnome, "xcb", fillWithGnomePorts},
    DesktopKind{SessionKind::wayland, "xcb", fillWithXWaylandPorts},
    // The toolkit's own way first; xcb where its plugin for Wayland is not installed.
    DesktopKind{SessionKind::wlroots, "wayland;xcb", fillWithSwayPorts},
    DesktopKind{SessionKind::kde, "wayland;xcb", fillWithKdePorts},
    DesktopKind{SessionKind::none, nullptr, fillWithNothing},
};

const DesktopKind& kindOf(const Session& session)
{
    return *std::ranges::find(kinds, session.kind, &DesktopKind::kind);
}

std::optional<Obstacle> obstacleOf(const DesktopKind& kind, const QProcessEnvironment& environment)
{
    // A compositor has answered already where it is known what it offers.
    if (!kind.windowSystem || hasWaylandWindows(sessionOf(environment)))
        return std::nullopt;
    return displayObstacle(displayName(environment));
}

} // namespace

Result<QByteArray, Obstacle> windowSystem(const QProcessEnvironment& environment)
{
    const DesktopKind& kind = kindOf(sessionOf(environment));
    const auto obstacle =
        kind.windowSystem ? obstacleOf(kind, environment) : displayObstacle(displayName(environment));
    if (obstacle)
        return failure(*obstacle);
    return QByteArray(kind.windowSystem);
}

Result<std::unique_ptr<Desktop>, Obstacle> openDesktop(const DesktopOptions& options, Scheduler& scheduler)
{
    const Session& session = sessionOf(options.environment);
    const DesktopKind& kind = kindOf(session);
    if (const auto obstacle = obstacleOf(kind, options.environment))
        return failure(*obstacle);
    const bool isAnywhere = session.kind != SessionKind::none;
    if (isAnywhere)
        introduceToPortals(options);
    const DesktopParts parts{scheduler, portalRemoteDesktop(options)};
    auto desktop = std::make_unique<Desktop>();
    if (const auto filled = kind.fill(*desktop, options, parts); !filled)
        return failure(filled.error());
    if (!desktop->hotkeys && isAnywhere)
        desktop->hotkeys = portalHotkeys(options.environment);
    // What the display server shows no program, the keyboards themselves tell, where the user lets them.
    if (!desktop->modifierEvents && isAnywhere)
        desktop->modifierEvents = std::make_shared<EvdevModifierEvents>();
    fillWithSharedPorts(*desktop, options, parts);
    fillWithNullPorts(*desktop, session);
    return desktop;
}

} // namespace tulvane
