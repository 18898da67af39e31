#pragma once

#include <QString>

#include <functional>

namespace tulvane {

class AppSettings;
class Clock;
class DictationController;
class DictationSession;
class HotkeyController;
class KeyboardShortcuts;
class LoginItem;
class ModelManager;
class Pasteboards;
class PermissionsService;
class Presentation;
class Scheduler;
class StatsStore;
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
    LoginItem& loginItem;
    Scheduler& scheduler;
    const Clock& clock;
    QString version; ///< the application's short version
    /// Ends this program and starts it anew, as after a change of the interface language.
    std::function<void()> relaunch = [] {};
    /// The windows themselves, for what leads from one to the other; set by the user interface.
    Windows* windows = nullptr;
};

} // namespace tulvane
