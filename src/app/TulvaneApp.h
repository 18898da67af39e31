#pragma once

#include <app/AppDelegate.h>
#include <app/program/Migration.h>
#include <audio/AudioRecorder.h>
#include <base/Clock.h>
#include <base/Scheduler.h>
#include <dictation/Demonstration.h>
#include <dictation/DictationController.h>
#include <dictation/DictationSession.h>
#include <dictation/Indicator.h>
#include <dictation/ManagedModelSource.h>
#include <dictation/MicrophoneTest.h>
#include <dictation/ModelFigures.h>
#include <hotkeys/HotkeyController.h>
#include <hotkeys/KeyboardShortcuts.h>
#include <hotkeys/RepeatedCommand.h>
#include <insertion/TextInserter.h>
#include <models/ModelManager.h>
#include <permissions/PermissionsService.h>
#include <ports/Desktop.h>
#include <ports/RemoteControl.h>
#include <settings/AppSettings.h>
#include <stats/StatsStore.h>
#include <ui/UiContext.h>

#include <QJsonObject>

#include <functional>

namespace tulvane {

class ComputingStatus;
class Recognizer;

/// What the program shows itself by. Outlives the program's objects.
struct Surfaces {
    Indicator& indicator;
    Windows& windows;
    /// Brings what is visible before other programs' windows; false when nothing is.
    std::function<bool()> bringToFront = [] { return false; };
    std::function<bool()> restoreMinimized = [] { return false; };
    /// Ends the program, once the event loop is reached.
    std::function<void()> quit = [] {};
};

/// The resident program behind its windows: every long-lived object, wired. Main thread; one per process.
class TulvaneApp final : public QObject {
    Q_OBJECT

public:
    struct Options {
        QString version;
        ModelFolders folders = ModelFolders::standard();
        QUrl hub;
        QString statisticsFile = StatsStore::defaultFile();
        QString dataFolder = Migration::standardParent(); ///< the user's folder for applications' data
        /// Where models run; outlives the program. Null where that is always the processor.
        ComputingStatus* computing = nullptr;
        QString figuresFile = ModelFigures::standardFile(); ///< what models took and gave here
        QString demoModel = {};                             ///< the bundled model's file
        /// The file with what the synthetic voice says in a language of the interface.
        std::function<QString(AppLanguage)> demoSpeech = [](AppLanguage) { return QString(); };
    };

    /// `desktop` and `recognizer` outlive the program.
    TulvaneApp(Desktop& desktop, Recognizer& recognizer, const Options& options, const Surfaces& surfaces);
    Q_DISABLE_COPY_MOVE(TulvaneApp)
    ~TulvaneApp() override;

    /// Once the event loop is about to run.
    void launch() { m_delegate.didFinishLaunching(); }
    /// Before the process ends: abandons a recording, and puts the user's clipboard back where a paste is
    /// still waiting to do so. Blocks for half a second at the most.
    void prepareToQuit();

    /// What the remote control is answered.
    [[nodiscard]] QJsonObject answer(RemoteRequest request, const QString& argument);

    [[nodiscard]] DictationController& controller() { return m_controller; }
    /// Whether nothing is missing for dictating.
    [[nodiscard]] bool isSetUp() const { return m_controller.isSetUp(); }
    /// What the windows show.
    [[nodiscard]] UiContext uiContext(const std::function<void()>& relaunch);

private:
    [[nodiscard]] AppDelegate::Dependencies lifeCycle(const Options& options, const Surfaces& surfaces);
    [[nodiscard]] DictationSession::Dependencies sessionDependencies(Recognizer& recognizer);
    [[nodiscard]] Demonstration::Dependencies demonstrationDependencies(Recognizer& recognizer,
                                                                        const Options& options);
    [[nodiscard]] DictationController::Dependencies controllerDependencies(const Surfaces& surfaces);
    /// The migration comes before whatever reads the files that it moves.
    [[nodiscard]] const QString& afterMigration(const QString& file);
    /// What the user wants models to run on reaches the recogniser, now and at each change.
    void followComputingDevice();
    [[nodiscard]] QJsonObject status() const;
    [[nodiscard]] QJsonObject diagnostics() const;
    [[nodiscard]] QJsonObject changeSettings(const QString& words);

    Desktop& m_desktop;
    QString m_version;
    ComputingStatus* m_computing;
    Windows& m_windows;
    std::function<void()> m_quit;
    SystemClock m_clock;
    EventLoopScheduler m_scheduler;
    AppSettings m_settings;
    AppDelegate m_delegate;
    StatsStore m_stats;
    ModelManager m_models;
    ManagedModelSource m_modelSource;
    AudioRecorder m_recorder;
    ModelFigures m_figures;
    MicrophoneTest m_microphoneTest;
    PermissionsService m_permissions;
    TextInserter m_inserter;
    KeyboardShortcuts m_shortcuts;
    HotkeyController m_hotkeys;
    RepeatedCommand m_hotkeyCommand;
    DictationSession m_session;
    DictationController m_controller;
    Demonstration m_demonstration;
};

} // namespace tulvane
