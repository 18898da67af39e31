#pragma once

#include <QByteArray>
#include <QProcessEnvironment>

namespace tulvane {

/// What a Wayland session offers a program that works in others' windows.
struct WaylandOffers {
    bool compositorReached = false;
    bool holdsClipboard = false; ///< a program without a window may read and write the selections
    bool virtualKeyboard = false;
    bool fakeInput = false;
    bool layerShell = false;
    bool sway = false; ///< its socket answers
    bool kwin = false; ///< owns its name on the session bus
    bool gnomeShell = false;
    bool mutterRemoteControl = false; ///< GNOME's own service, which presses keys, lets us
    /// The desktop's own portal presses keys once the user has agreed; looked for where nothing else does.
    bool remoteDesktopPortal = false;

    [[nodiscard]] bool postsKeys() const { return virtualKeyboard || fakeInput; }
    /// Whether the portal is the only way to press keys.
    [[nodiscard]] bool asksForKeys() const
    {
        return remoteDesktopPortal && !postsKeys() && !mutterRemoteControl;
    }
    /// Whether a text can be pasted into other programs.
    [[nodiscard]] bool reachesPrograms() const { return holdsClipboard && postsKeys(); }
};

/// Asks the compositor, the session bus and sway's socket at the first call for a session, and remembers.
/// Waits for their answers. Any thread.
[[nodiscard]] const WaylandOffers& waylandOffers(const QProcessEnvironment& environment);

} // namespace tulvane
