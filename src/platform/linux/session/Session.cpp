#include <base/Translate.h>
#include <platform/linux/evdev/KeyboardAccess.h>
#include <platform/linux/session/Session.h>
#include <platform/linux/session/UnwatchedPrivacyPermissions.h>
#include <platform/linux/session/WaylandOffers.h>
#include <platform/linux/session/X11Abilities.h>
#include <platform/linux/session/X11PrivacyPermissions.h>

#include <algorithm>
#include <array>

namespace tulvane {

namespace {

// A Wayland session answers X11 clients, too, but lets them see only the keys of X11 windows: a hot key would
// seem to work and fail in most programs.
bool isWayland(const QProcessEnvironment& environment)
{
    return environment.value(QStringLiteral("XDG_SESSION_TYPE")) == u"wayland" ||
           !environment.value(QStringLiteral("WAYLAND_DISPLAY")).isEmpty();
}

bool isGnome(const QProcessEnvironment& environment)
{
    return isWayland(environment) && waylandOffers(environment).gnomeShell;
}

bool isKde(const QProcessEnvironment& environment)
{
    return isWayland(environment) && waylandOffers(environment).kwin;
}

bool isWlroots(const QProcessEnvironment& environment)
{
    if (!isWayland(environment))
        return false;
    const WaylandOffers& offers = waylandOffers(environment);
    return offers.holdsClipboard && offers.virtualKeyboard && offers.layerShell;
}

bool isX11(const QProcessEnvironment& environment)
{
    return !displayName(environment).isEmpty();
}

bool isAnything(const QProcessEnvironment& /*environment*/)
{
    return true;
}

KeyObstacles waylandObstacles()
{
    return {.hotkeys =
                translate("Hotkeys are not supported in a Wayland session yet. Bind the command “tulvane "
                          "toggle” to a key in the desktop's own keyboard settings."),
            .pasting = {translate("Pasting into other programs is not supported in a Wayland session yet."),
                        translate("The text is left on the clipboard: paste it yourself.")},
            .watching = {translate("Hotkeys are not supported in a Wayland session yet."),
                         translate("Bind the command “tulvane toggle” to a key in your desktop's keyboard "
                                   "settings.")}};
}

/// What is out of reach where keys can be posted and the clipboard held.
KeyObstacles openWaylandObstacles()
{
    return {.hotkeys = translate(
                "This desktop gives programs no hotkeys. Bind the command “tulvane toggle” to a key in the "
                "desktop's own configuration."),
            .pasting = {translate("This desktop does not let Tulvane paste into other programs."),
                        translate("The text is left on the clipboard: paste it yourself.")},
            .watching = {
                translate("A Wayland desktop shows no program the keys of others, so single keys cannot be "
                          "watched."),
                translate("Use a key combination as the hotkey.")}};
}

KeyObstacles kdeObstacles()
{
    KeyObstacles obstacles = openWaylandObstacles();
    obstacles.pasting = {
        translate("KDE does not let Tulvane press keys: it has not found Tulvane's desktop entry."),
        translate("Install Tulvane for all users, or log in again.")};
    return obstacles;
}

/// Where the portal alone presses keys: the running program knows what the user has answered.
Obstacle notAllowedYet()
{
    return {translate(
                "This desktop lets Tulvane press keys only once you have allowed it in a dialog of its own."),
            translate("Tulvane's setup guide brings the dialog; some desktops ask again at each start.")};
}

KeyObstacles kdeAskedObstacles()
{
    KeyObstacles obstacles = openWaylandObstacles();
    obstacles.pasting = notAllowedYet();
    return obstacles;
}

KeyObstacles gnomeObstacles()
{
    KeyObstacles obstacles = openWaylandObstacles();
    obstacles.hotkeys = obstacles.watching.text();
    obstacles.pasting = {
        translate("GNOME does not let Tulvane press keys: its service for remote control does not answer."),
        translate("The text is left on the clipboard: paste it yourself. Log in again to try anew.")};
    return obstacles;
}

KeyObstacles gnomeAskedObstacles()
{
    KeyObstacles obstacles = gnomeObstacles();
    obstacles.pasting = notAllowedYet();
    return obstacles;
}

Obstacle keyboardObstacle()
{
    return obstacleOf(keyboardAccess());
}

template <KeyObstacles (*obstacles)()>
std::unique_ptr<PrivacyPermissions> waylandPermissions(const QProcessEnvironment& environment,
                                                       const MicrophoneDenied& microphoneDenied)
{
    return std::make_unique<UnwatchedPrivacyPermissions>(waylandOffers(environment).reachesPrograms(),
                                                         obstacles, microphoneDenied, keyboardObstacle);
}

std::unique_ptr<PrivacyPermissions> kdePermissions(const QProcessEnvironment& environment,
                                                   const MicrophoneDenied& microphoneDenied)
{
    return waylandOffers(environment).asksForKeys()
               ? waylandPermissions<kdeAskedObstacles>(environment, microphoneDenied)
               : waylandPermissions<kdeObstacles>(environment, microphoneDenied);
}

/// Of a session that lets no program paste.
template <KeyObstacles (*obstacles)()>
std::unique_ptr<PrivacyPermissions> closedWaylandPermissions(const QProcessEnvironment& /*environment*/,
                                                             const MicrophoneDenied& microphoneDenied)
{
    return std::make_unique<UnwatchedPrivacyPermissions>(false, obstacles, microphoneDenied,
                                                         keyboardObstacle);
}

KeyObstacles noSessionObstacles()
{
    const Obstacle noDisplay{translate("No X display could be reached."),
                             translate("Start Tulvane from your desktop session, where DISPLAY is set.")};
    return {.hotkeys = translate(
                "There is no desktop here whose keys could be heard. Start Tulvane from a desktop session."),
            .pasting = noDisplay,
            .watching = noDisplay};
}

/// The clipboard is the X server's there.
std::unique_ptr<PrivacyPermissions> gnomePermissions(const QProcessEnvironment& environment,
                                                     const MicrophoneDenied& microphoneDenied)
{
    const WaylandOffers& offers = waylandOffers(environment);
    return std::make_unique<UnwatchedPrivacyPermissions>(
        offers.mutterRemoteControl, offers.asksForKeys() ? gnomeAskedObstacles : gnomeObstacles,
        microphoneDenied, keyboardObstacle);
}

std::unique_ptr<PrivacyPermissions> x11Permissions(const QProcessEnvironment& environment,
                                                   const MicrophoneDenied& microphoneDenied)
{
    return std::make_unique<X11PrivacyPermissions>(x11Abilities(displayName(environment)), microphoneDenied);
}

template <KeyObstacles (*obstacles)()>
std::unique_ptr<PrivacyPermissions> nullPermissions(const QProcessEnvironment& /*environment*/,
                                                    const MicrophoneDenied& microphoneDenied)
{
    return std::make_unique<UnwatchedPrivacyPermissions>(false, obstacles, microphoneDenied);
}

} // namespace

const Session& sessionOf(const QProcessEnvironment& environment)
{
    // The first that is here counts.
    static const std::array sessions{
        Session{SessionKind::gnome, QStringLiteral("Wayland, GNOME"), isGnome, gnomeObstacles,
                gnomePermissions},
        Session{SessionKind::kde, QStringLiteral("Wayland, KDE"), isKde, kdeObstacles, kdePermissions},
        Session{SessionKind::wlroots, QStringLiteral("Wayland, wlroots"), isWlroots, openWaylandObstacles,
                waylandPermissions<openWaylandObstacles>},
        Session{SessionKind::wayland, QStringLiteral("Wayland"), isWayland, waylandObstacles,
                closedWaylandPermissions<waylandObstacles>},
        Session{SessionKind::x11, QStringLiteral("X11"), isX11, nullptr, x11Permissions},
        Session{SessionKind::none, QStringLiteral("none"), isAnything, noSessionObstacles,
                nullPermissions<noSessionObstacles>},
    };
    return *std::ranges::find_if(sessions,
                                 [&](const Session& session) { return session.isHere(environment); });
}

bool asksForKeys(const Session& session, const QProcessEnvironment& environment)
{
    const bool isKnown = session.kind == SessionKind::gnome || session.kind == SessionKind::kde;
    return isKnown && waylandOffers(environment).asksForKeys();
}

bool hasWaylandWindows(const Session& session)
{
    return session.kind == SessionKind::wlroots || session.kind == SessionKind::kde;
}

QByteArray displayName(const QProcessEnvironment& environment)
{
    return environment.value(QStringLiteral("DISPLAY")).toLocal8Bit();
}

QString desktopName(const QProcessEnvironment& environment)
{
    return environment.value(QStringLiteral("XDG_CURRENT_DESKTOP"));
}

} // namespace tulvane
