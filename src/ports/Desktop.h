#pragma once

#include <ports/Obstacle.h>

#include <QList>
#include <QString>

#include <functional>
#include <memory>

namespace tulvane {

class AudioInput;
class BackgroundTransfers;
class FocusedElements;
class GlobalHotkeys;
class IndicatorPanel;
class KeyPosting;
class KeyboardGrab;
class LoginItem;
class ModifierEvents;
class Pasteboards;
class Presentation;
class PrivacyPermissions;
class Processes;
class ScreenLock;
class Sounds;
class StatusItem;
class SystemMemory;
class UserDefaults;
class Workspace;

/// A port that a desktop has no adapter for.
struct LackingPort {
    QString name; ///< "hot keys"; for the log and for tests
    Obstacle obstacle;
};

/// The desktop's side of every port, as the resident program uses them. None is null: where the desktop lacks
/// one, a null port is in its place, and `lacking` names it. Main thread.
struct Desktop {
    std::shared_ptr<UserDefaults> defaults;
    std::shared_ptr<AudioInput> microphone;
    std::shared_ptr<Sounds> sounds;
    std::shared_ptr<GlobalHotkeys> hotkeys;
    std::shared_ptr<ModifierEvents> modifierEvents;
    std::shared_ptr<Pasteboards> pasteboards;
    std::shared_ptr<KeyPosting> keys;
    std::shared_ptr<FocusedElements> elements;
    std::shared_ptr<PrivacyPermissions> permissions;
    std::shared_ptr<Processes> processes;
    std::shared_ptr<Workspace> workspace;
    std::shared_ptr<BackgroundTransfers> transfers;
    std::shared_ptr<SystemMemory> memory;
    std::shared_ptr<Presentation> presentation;
    std::shared_ptr<KeyboardGrab> keyboard;
    std::shared_ptr<LoginItem> loginItem;
    std::shared_ptr<StatusItem> statusItem;
    std::shared_ptr<ScreenLock> screenLock;
    /// For the indicator's window; needs the application object of the windows.
    std::function<std::unique_ptr<IndicatorPanel>()> makeIndicatorPanel;
    /// Whether the desktop runs `tulvane toggle` for the hotkey, again and again while the key is held, since
    /// it gives programs no hotkeys of their own.
    std::function<bool()> runsCommandForHotkey = [] { return false; };
    /// The desktop's short signal that a key meant nothing.
    std::function<void()> beep = [] {};
    /// Has a screen reader say the text, whatever has the focus.
    std::function<void(const QString& text)> announce = [](const QString&) {};
    /// Sets the one handler that is called once when the desktop has ended: nothing can be done for the user
    /// then.
    std::function<void(const std::function<void()>& ended)> setEndHandler = [](const auto&) {};
    QList<LackingPort> lacking;
};

} // namespace tulvane
