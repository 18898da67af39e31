#include <app/Relaunch.h>
#include <app/ResidentProgram.h>
#include <app/TulvaneApp.h>
#include <app/cli/InterruptWatcher.h>
#include <app/program/ProgramFolders.h>
#include <app/program/ProgramRecognizer.h>
#include <app/program/ServiceOptions.h>
#include <base/Log.h>
#include <base/async/WaitFor.h>
#include <insertion/PasteTable.h>
#include <models/ModelHub.h>
#include <ports/OpenDesktop.h>
#include <ports/ProgramServices.h>
#include <ports/RemoteControl.h>
#include <ports/UserDefaults.h>
#include <settings/InterfaceLanguage.h>
#include <ui/UserInterface.h>
#include <ui/indicator/HUDController.h>
#include <ui/windows/SettingsWindowController.h>
#include <ui/windows/VisibleWindows.h>

#include <QCoreApplication>
#include <QDeadlineTimer>
#include <QQuickView>
#include <QThread>

#include <chrono>

namespace tulvane {

namespace {

constexpr std::chrono::milliseconds handOverLimit{5000};
constexpr std::chrono::milliseconds handOverPause{20};

/// Asks the program that runs already to show itself. False where it does not answer, and where it answers
/// nothing, because it is about to end or has only just begun.
bool isHandedOver(RemoteControl& remote, const cli::LaunchOptions& words)
{
    // A start at login that finds the program there has nothing to ask of it.
    const QString page = words.page ? rawValue(*words.page) : QString();
    const bool isQuiet = words.background && !words.page;
    const auto answer =
        waitFor(isQuiet ? remote.ask(RemoteRequest::status, {}) : remote.ask(RemoteRequest::activate, page));
    return answer && !answer->isEmpty();
}

/// Becomes the running program, or hands over to the one that runs already; then the exit status. While that
/// one is ending, this one waits for its end, and takes its place.
std::optional<int> claimOrHandOver(RemoteControl& remote, const RemoteControl::Answer& answer,
                                   const cli::LaunchOptions& words, cli::Console& console)
{
    const QDeadlineTimer limit(handOverLimit);
    while (remote.claim(answer) == RemoteControl::Claim::taken) {
        if (isHandedOver(remote, words)) {
            console.err << "Tulvane is running already." << Qt::endl;
            return cli::ExitStatus::done;
        }
        if (limit.hasExpired())
            return cli::fail(console, QStringLiteral("Tulvane is running already, but does not answer."));
        QThread::msleep(handOverPause.count());
    }
    return std::nullopt;
}

TulvaneApp::Options appOptions(const UserDefaults& defaults)
{
    const ProgramFolders folders = ProgramFolders::ofThisProgram();
    return {.version = QCoreApplication::applicationVersion(),
            .folders = ModelFolders::standard(),
            .hub = modelHubURL(qEnvironmentVariable(modelHubVariable),
                               defaults.value(QLatin1String(modelHubSetting)).toString()),
            .statisticsFile = StatsStore::defaultFile(),
            .computing = &programComputing(),
            .demoModel = folders.demoModel(),
            .demoSpeech = [folders](AppLanguage language) { return folders.demoSpeech(rawValue(language)); }};
}

/// Where a change of the interface language, which needs the program to start anew, is made.
void startAnew(Processes& processes)
{
    relaunch(processes, ProgramFolders::ofThisProgram().commandLine(),
             {QStringLiteral("--page"), rawValue(SettingsTab::settings)}, [] { QCoreApplication::quit(); });
}

Result<std::unique_ptr<Desktop>, Obstacle> openDesktop(const std::shared_ptr<UserDefaults>& defaults,
                                                       Scheduler& scheduler)
{
    const ProgramFolders folders = ProgramFolders::ofThisProgram();
    const ServiceOptions services = serviceOptions();
    return tulvane::openDesktop({.environment = services.environment,
                                 .defaults = defaults,
                                 .terminals = pasteTable(defaults->value(terminalWindowClassesKey)),
                                 .symbols = QStringLiteral(":/symbols"),
                                 .program = folders.commandLine(),
                                 .helpPage = QUrl::fromLocalFile(folders.helpPage()),
                                 .transferHelper = services.transferHelper,
                                 .transferFolder = services.transferFolder},
                                scheduler);
}

void endWithDesktop(const Desktop& desktop)
{
    desktop.setEndHandler([] {
        qCWarning(lcApp, "The display server has ended");
        QCoreApplication::quit();
    });
}

/// From the launch to the end of everything that the user could lose.
int run(TulvaneApp& app, Windows& windows, const cli::LaunchOptions& words)
{
    app.launch();
    // Where something is missing, the launch has opened the way through it.
    if (words.page || (!words.background && app.isSetUp()))
        windows.showPage(words.page.value_or(SettingsTab::home));
    const int status = QCoreApplication::exec();
    app.prepareToQuit();
    return status;
}

/// The program on its desktop, from its objects' making to their end. `running` is the program meanwhile.
int runOn(Desktop& desktop, const std::shared_ptr<LocalServices>& services, RemoteControl& remote,
          Scheduler& scheduler, const Clock& clock, const cli::LaunchOptions& words, TulvaneApp*& running)
{
    const auto quit = [] { QCoreApplication::quit(); };
    UserInterface windows({.makePanel = desktop.makeIndicatorPanel, .scheduler = scheduler, .clock = clock});
    TulvaneApp app(desktop, programRecognizer(RecognizerServices::of(services)),
                   appOptions(*desktop.defaults),
                   {.indicator = windows.indicator(),
                    .windows = windows,
                    .bringToFront =
                        [&windows, &running] {
                            return running && bringVisibleWindowsToFront(windows.settingsWindow().window());
                        },
                    .restoreMinimized = &restoreMinimizedWindows,
                    .quit = quit});
    const UiContext context = app.uiContext([&desktop] { startAnew(*desktop.processes); });
    installInterfaceLanguage(context.settings.appLanguage());
    windows.attach(context);
    windows.showStatusItem(*desktop.statusItem, quit);
    running = &app;
    QObject::connect(&app.controller(), &DictationController::phaseChanged, &app,
                     [&remote](const Phase& phase) { remote.announcePhase(nameOf(phase.kind)); });
    const cli::InterruptWatcher signalWatch(-1, quit);
    endWithDesktop(desktop);
    // A start from here on waits for the end of this process.
    QObject::connect(QCoreApplication::instance(), &QCoreApplication::aboutToQuit, &app,
                     [&running] { running = nullptr; });
    const int status = run(app, windows, words);
    windows.detach();
    return status;
}

} // namespace

int runResidentProgram(const cli::LaunchOptions& words, cli::Console& console)
{
    static const SystemClock clock;
    EventLoopScheduler scheduler;
    const std::shared_ptr<ProgramServices> services = openProgramServices(serviceOptions(), clock);
    RemoteControl& remote = services->remote();
    TulvaneApp* running = nullptr;
    const auto answer = [&running](RemoteRequest request, const QString& argument) {
        return running ? running->answer(request, argument) : QJsonObject();
    };
    if (const auto status = claimOrHandOver(remote, answer, words, console))
        return *status;
    const auto desktop = openDesktop(services->defaults(), scheduler);
    if (!desktop)
        return cli::fail(console, desktop.error().text());
    return runOn(**desktop, services, remote, scheduler, clock, words, running);
}

} // namespace tulvane
