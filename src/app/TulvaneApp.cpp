#include <app/TulvaneApp.h>
#include <app/cli/RemoteRun.h>
#include <app/cli/SettingsCommand.h>
#include <app/program/HotkeyDiagnostics.h>
#include <audio/files/PlainWave.h>
#include <ports/Presentation.h>
#include <ports/PrivacyPermissions.h>
#include <ports/ScreenLock.h>
#include <ports/SystemMemory.h>
#include <settings/InterfaceLanguage.h>
#include <speech/ThreadCount.h>
#include <speech/device/ComputingStatus.h>

#include <QDeadlineTimer>
#include <QEventLoop>
#include <QJsonArray>
#include <QTimer>

#include <chrono>

namespace tulvane {

namespace {

constexpr std::chrono::milliseconds longestGoodbye{500};

} // namespace

TulvaneApp::TulvaneApp(Desktop& desktop, Recognizer& recognizer, const Options& options,
                       const Surfaces& surfaces)
    : m_desktop(desktop),
      m_version(options.version),
      m_computing(options.computing),
      m_windows(surfaces.windows),
      m_quit(surfaces.quit),
      m_settings(*desktop.defaults),
      m_delegate(lifeCycle(options, surfaces)),
      m_stats(afterMigration(options.statisticsFile)),
      m_models({.folders = options.folders,
                .hub = options.hub,
                .mode = ModelManager::SessionMode::background,
                .catalogue = WhisperModel::all()},
               *desktop.transfers),
      m_modelSource(m_settings, m_models),
      m_recorder(*desktop.microphone, m_clock),
      m_figures(options.figuresFile, [&memory = *desktop.memory] { return memory.resident(); }),
      m_microphoneTest(*desktop.microphone, m_clock, m_scheduler),
      m_permissions({*desktop.permissions, *desktop.processes, *desktop.workspace, m_scheduler},
                    std::nullopt),
      m_inserter({*desktop.pasteboards, *desktop.keys, *desktop.elements, *desktop.permissions, m_scheduler}),
      m_shortcuts(*desktop.defaults, *desktop.hotkeys),
      m_hotkeys(m_settings, m_shortcuts, *desktop.modifierEvents, m_clock),
      m_hotkeyCommand(m_clock, m_scheduler,
                      [this](HotkeyStateMachine::Event event, std::chrono::milliseconds age) {
                          m_hotkeys.handle(event, age);
                      }),
      m_session(sessionDependencies(recognizer)),
      m_controller(controllerDependencies(surfaces)),
      m_demonstration(demonstrationDependencies(recognizer, options))
{
    followComputingDevice();
    ScreenLock& lock = *desktop.screenLock;
    lock.setChangeHandler([this](bool locked) { m_controller.setLocked(locked); });
    m_controller.setLocked(lock.isLocked());
}

void TulvaneApp::followComputingDevice()
{
    if (m_computing == nullptr)
        return;
    m_computing->want(m_settings.computingDevice());
    connect(&m_settings.computingDevice, &AnySetting::changed, this,
            [this] { m_computing->want(m_settings.computingDevice()); });
}

DictationSession::Dependencies TulvaneApp::sessionDependencies(Recognizer& recognizer)
{
    return {.settings = m_settings,
            .recorder = m_recorder,
            .models = m_modelSource,
            .engine = recognizer,
            .stats = m_stats,
            .scheduler = m_scheduler,
            .clock = m_clock,
            .isMicrophoneAuthorized =
                [&permissions = *m_desktop.permissions] {
                    return permissions.microphone() == MicrophoneAccess::authorized;
                },
            .threadCount = recommendedThreadCount(),
            .fixedOptions = std::nullopt,
            .figures = &m_figures};
}

Demonstration::Dependencies TulvaneApp::demonstrationDependencies(Recognizer& recognizer,
                                                                  const Options& options)
{
    const auto speech = [file = options.demoSpeech](AppLanguage language) -> Recognizer::Samples {
        auto sound = readPlainWave(file(language));
        return sound ? std::make_shared<const std::vector<float>>(std::move(sound->samples)) : nullptr;
    };
    return {.settings = m_settings,
            .engine = recognizer,
            .sounds = *m_desktop.sounds,
            .scheduler = m_scheduler,
            .modelFile = options.demoModel,
            .speech = speech,
            .threadCount = recommendedThreadCount()};
}

DictationController::Dependencies TulvaneApp::controllerDependencies(const Surfaces& surfaces)
{
    return {.settings = m_settings,
            .session = m_session,
            .recorder = m_recorder,
            .models = m_modelSource,
            .permissions = m_permissions,
            .inserter = m_inserter,
            .hotkeys = m_hotkeys,
            .indicator = surfaces.indicator,
            .windows = surfaces.windows,
            .sounds = *m_desktop.sounds,
            .scheduler = m_scheduler,
            .version = m_version,
            .refreshModels = [this] { m_models.refreshStates(); },
            .hasCombination = [this] { return m_shortcuts.getShortcut(ShortcutName::dictate()).has_value(); },
            .applyActivationPolicy = [this] { m_delegate.applyActivationPolicy(); }};
}

AppDelegate::Dependencies TulvaneApp::lifeCycle(const Options& options, const Surfaces& surfaces)
{
    return {.settings = m_settings,
            .defaults = *m_desktop.defaults,
            .presentation = *m_desktop.presentation,
            .dataFolder = options.dataFolder,
            .launchController = [this] { m_controller.launch(); },
            .isSetUp = [this] { return m_controller.isSetUp(); },
            .cancelRecording = [this] { m_controller.cancel(); },
            .bringWindowsToFront = surfaces.bringToFront,
            .restoreMinimized = surfaces.restoreMinimized,
            .openMainWindow = [this] { m_windows.showPage(SettingsTab::home); },
            .openOnboarding = [this] { m_windows.showOnboarding(); }};
}

const QString& TulvaneApp::afterMigration(const QString& file)
{
    m_settings.syncInterfaceLanguage();
    m_delegate.willFinishLaunching();
    return file;
}

UiContext TulvaneApp::uiContext(const std::function<void()>& relaunch)
{
    return {.settings = m_settings,
            .session = m_session,
            .controller = m_controller,
            .demonstration = m_demonstration,
            .recorder = m_recorder,
            .microphoneTest = m_microphoneTest,
            .models = m_models,
            .figures = m_figures,
            .stats = m_stats,
            .permissions = m_permissions,
            .shortcuts = m_shortcuts,
            .hotkeys = m_hotkeys,
            .pasteboards = *m_desktop.pasteboards,
            .workspace = *m_desktop.workspace,
            .presentation = *m_desktop.presentation,
            .keyboard = *m_desktop.keyboard,
            .loginItem = *m_desktop.loginItem,
            .statusItem = *m_desktop.statusItem,
            .scheduler = m_scheduler,
            .clock = m_clock,
            .version = m_version,
            .computing = m_computing,
            .relaunch = relaunch,
            .quit = m_quit,
            .beep = m_desktop.beep,
            .announce = m_desktop.announce};
}

TulvaneApp::~TulvaneApp()
{
    m_desktop.screenLock->setChangeHandler({});
}

void TulvaneApp::prepareToQuit()
{
    m_delegate.willTerminate();
    m_inserter.cutWaitsShort();
    // The clipboard's restoration needs the event loop; half a second is more than it ever takes.
    const QDeadlineTimer deadline(longestGoodbye);
    QEventLoop loop;
    // Wakes the loop: with a limit of its own, processEvents would not wait, and would keep a processor busy.
    QTimer tick;
    tick.start(20);
    while (m_controller.phase().kind == Phase::Kind::inserting && !deadline.hasExpired())
        loop.processEvents(QEventLoop::AllEvents | QEventLoop::WaitForMoreEvents);
}

QJsonObject TulvaneApp::answer(RemoteRequest request, const QString& argument)
{
    switch (request) {
    case RemoteRequest::start:
        m_controller.start();
        break;
    case RemoteRequest::stop:
        m_controller.stop();
        break;
    case RemoteRequest::toggle:
        if (m_desktop.runsCommandForHotkey())
            m_hotkeyCommand.note();
        else
            m_controller.toggle();
        break;
    case RemoteRequest::cancel:
        m_controller.cancel();
        break;
    case RemoteRequest::doctor: {
        const ScopedEnglish english;
        return diagnostics();
    }
    case RemoteRequest::settings:
        return changeSettings(argument);
    case RemoteRequest::activate:
        if (const auto page = fromRawValue<SettingsTab>(argument))
            m_windows.showPage(*page);
        else
            m_delegate.shouldHandleReopen();
        break;
    case RemoteRequest::quit:
        m_quit();
        break;
    case RemoteRequest::status:
        break;
    }
    return status();
}

QJsonObject TulvaneApp::status() const
{
    // The phase's own message stays in the user's language: it is what the user sees at this moment.
    const ScopedEnglish english;
    const Phase& phase = m_controller.phase();
    return {{QStringLiteral("phase"), nameOf(phase.kind)},
            {QStringLiteral("message"), phase.text},
            {QStringLiteral("locked"), m_controller.isLocked()},
            {QStringLiteral("modelLoading"), m_session.isModelLoading()},
            {QStringLiteral("hotkey"), m_hotkeys.hotkeyDescription()},
            {QStringLiteral("historyCount"), m_session.history().size()}};
}

QJsonObject TulvaneApp::diagnostics() const
{
    QJsonArray lines;
    for (const Diagnostic& diagnostic : hotkeyDiagnostics(m_shortcuts, m_hotkeys))
        lines.append(diagnostic.toJson());
    if (m_controller.isLocked())
        lines.append(Diagnostic::bad(QStringLiteral("screen"),
                                     QStringLiteral("The screen is locked: nothing is recorded."),
                                     QStringLiteral("Unlock it."))
                         .toJson());
    return {{QStringLiteral("diagnostics"), lines}};
}

QJsonObject TulvaneApp::changeSettings(const QString& words)
{
    QStringList models;
    for (const WhisperModel& model : m_models.catalogue())
        models.append(model.id);
    return cli::answerOf(words, [&](const QStringList& arguments, cli::Console& console) {
        return cli::runSettings(arguments, console, m_settings, models);
    });
}

} // namespace tulvane
