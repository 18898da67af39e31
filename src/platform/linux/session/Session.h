#pragma once

#include <ports/Obstacle.h>
#include <ports/PrivacyPermissions.h>

#include <QProcessEnvironment>
#include <QString>

#include <functional>
#include <memory>

namespace tulvane {

/// `wlroots`: sway and its kind. `wayland`: one that is none of the others, or that does not answer.
enum class SessionKind { x11, wlroots, kde, gnome, wayland, none };

/// Why the keys of other programs are out of reach in a kind of session, in the user's language.
struct KeyObstacles {
    QString hotkeys; ///< reason and remedy in one text
    Obstacle pasting;
    Obstacle watching;
};

/// Whether the sound server refuses us the microphone; a server that is not there does not.
using MicrophoneDenied = std::function<bool()>;

/// A kind of desktop session, as every process of the program knows it.
struct Session {
    SessionKind kind;
    QString name; ///< "X11", as `doctor` says it
    /// By what the session offers, never by what it calls itself. May wait for the session's answers.
    bool (*isHere)(const QProcessEnvironment& environment);
    /// Null where the program reaches the keys.
    KeyObstacles (*keyObstacles)();
    /// May wait for the display's answer.
    std::unique_ptr<PrivacyPermissions> (*permissions)(const QProcessEnvironment& environment,
                                                       const MicrophoneDenied& microphoneDenied);
};

/// The session that the environment names; the one place that decides it. Any thread.
[[nodiscard]] const Session& sessionOf(const QProcessEnvironment& environment);

/// Whether the program's windows are the compositor's own here, and need no X server.
[[nodiscard]] bool hasWaylandWindows(const Session& session);

/// Whether keys can be posted in this session only by the desktop's portal, which asks the user first.
[[nodiscard]] bool asksForKeys(const Session& session, const QProcessEnvironment& environment);

/// The X display's name, as in DISPLAY; empty where there is none.
[[nodiscard]] QByteArray displayName(const QProcessEnvironment& environment);
/// The names that the desktop gives itself ("GNOME"), as in XDG_CURRENT_DESKTOP.
[[nodiscard]] QString desktopName(const QProcessEnvironment& environment);

} // namespace tulvane
