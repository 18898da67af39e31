#pragma once

#include <QString>

#include <functional>

namespace tulvane {

class AppSettings;
class AudioRecorder;
class Clock;
class ComputingStatus;
class Demonstration;
class DictationController;
class DictationSession;
class HotkeyController;
class KeyboardGrab;
class KeyboardShortcuts;
class LoginItem;
class MicrophoneTest;
class ModelFigures;
class ModelManager;
class Pasteboards;
class PermissionsService;
class Presentation;
class Scheduler;
class StatsStore;
class StatusItem;
class Workspace;

/// Everything that the user interface is built over. UserInterface and ViewModels, which make its parts, are
/// the only users; each part names what it needs. All of it outlives them. Main thread.
struct UiContext {
    AppSettings& settings;
    DictationSession& session;
    DictationController& controller;
    Demonstration& demonstration;
    const AudioRecorder& recorder; ///< of the dictations
    MicrophoneTest& microphoneTest;
    ModelManager& models;
    const ModelFigures& figures;
    StatsStore& stats;
    PermissionsService& permissions;
    KeyboardShortcuts& shortcuts;
    HotkeyController& hotkeys;
    Pasteboards& pasteboards;
    Workspace& workspace;
    Presentation& presentation;
    KeyboardGrab& keyboard;
    LoginItem& loginItem;
    StatusItem& statusItem;
    Scheduler& scheduler;
    const Clock& clock;
    QString version;                      ///< the application's short version
    ComputingStatus* computing = nullptr; ///< where models run; null where that is always the processor
    /// Ends this program and starts it anew, as after a change of the interface language.
    std::function<void()> relaunch = [] {};
    /// Ends this program, once the event loop is reached.
    std::function<void()> quit = [] {};
    /// The desktop's short signal that a key meant nothing.
    std::function<void()> beep = [] {};
    /// Has a screen reader say the text, whatever has the focus.
    std::function<void(const QString& text)> announce = [](const QString&) {};
};

} // namespace tulvane
