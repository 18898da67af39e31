#pragma once

#include <QString>

#include <functional>
#include <optional>

namespace tulvane {

class AppSettings;
class Clock;
class DictationController;
class DictationSession;
class HotkeyController;
class KeyboardShortcuts;
struct KeyCombination;
class LoginItem;
class ModelManager;
class Pasteboards;
class PermissionsService;
class Presentation;
class Scheduler;
class StatsStore;
class KeyboardGrab;
class Windows;
class Workspace;

/// What the windows show and change. All of it outlives them. Main thread.
struct UiContext {
    AppSettings& settings;
    DictationSession& session;
    DictationController& controller;
    ModelManager& models;
    StatsStore& stats;
    PermissionsService& permissions;
    KeyboardShortcuts& shortcuts;
    HotkeyController& hotkeys;
    Pasteboards& pasteboards;
    Workspace& workspace;
    Presentation& presentation;
    KeyboardGrab& keyboard;
    LoginItem& loginItem;
    Scheduler& scheduler;
    const Clock& clock;
    QString version; ///< the application's short version
    /// Ends this program and starts it anew, as after a change of the interface language.
    std::function<void()> relaunch = [] {};
    /// The desktop's short signal that a key meant nothing.
    std::function<void()> beep = [] {};
    /// The title of the menu item of ours that a key combination works; none where none does.
    std::function<std::optional<QString>(const KeyCombination&)> menuItemOf = {};
    /// The windows themselves, for what leads from one to the other; set by the user interface.
    Windows* windows = nullptr;
};

} // namespace tulvane
