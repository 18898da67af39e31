#include <app/Relaunch.h>
#include <app/ResidentProgram.h>
#include <app/TulvaneApp.h>
#include <app/cli/InterruptWatcher.h>
#include <app/program/ProgramFolders.h>
#include <app/program/ServiceOptions.h>
#include <base/Log.h>
#include <base/async/WaitFor.h>
#include <insertion/PasteTable.h>
#include <models/ModelHub.h>
#include <settings/InterfaceLanguage.h>
#include <ui/UserInterface.h>
#include <ui/indicator/HUDController.h>
#include <ui/menubar/MenuBarMenu.h>
#include <ui/windows/SettingsWindowController.h>
#include <ui/windows/VisibleWindows.h>

#include <QCoreApplication>
#include <QQuickView>

#include <ports/OpenDesktop.h>
#include <ports/UserDefaults.h>

namespace tulvane {

namespace {

/// Asks the program that runs already to show itself.
int handOver(RemoteControl& remote, const cli::LaunchOptions& words, cli::Console& console)
{
    // A start at login that finds the program there has nothing to ask of it.
    const QString page = words.page ? rawValue(*words.page) : QString();
    const bool isQuiet = words.background && !words.page;
    const auto answer = cli::waitFor(isQuiet ? remote.ask(RemoteRequest::status, {})
                                             : remote.ask(RemoteRequest::activate, page));
    if (!answer)
        return cli::fail(console, QStringLiteral("Tulvane is running already, but does not answer."));
    console.err << "Tulvane is running already." << Qt::endl;
    return cli::ExitStatus::done;
}

TulvaneApp::Options appOptions(const UserDefaults& defaults)
{
    return {.version = QCoreApplication::applicationVersion(),
            .backends = ProgramFolders::ofThisProgram().backends,
            .folders = ModelFolders::standard(),
            .hub = modelHubURL(qEnvironmentVariable(modelHubVariable),
                               defaults.value(QLatin1String(modelHubSetting)).toString()),
            .statisticsFile = StatsStore::defaultFile()};
}

/// Where a change of the interface language, which needs the program to start anew, is made.
void startAnew(Processes& processes)
{
    relaunch(processes, ProgramFolders::ofThisProgram().commandLine(),
             {QStringLiteral("--page"), rawValue(SettingsTab::settings)}, [] { QCoreApplication::quit(); });
}

std::unique_ptr<ProgramServices> openServices(const Clock& clock, cli::Console& console)
{
    auto services = openProgramServices(serviceOptions(), clock);
    services->defaults()->setTroubleHandler([&console](const DefaultsError& error) {
        console.err << "tulvane: " << error.description() << Qt::endl;
    });
    return services;
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
        qCWarning(lcApp, "The X server has ended");
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
int runOn(Desktop& desktop, RemoteControl& remote, Scheduler& scheduler, const Clock& clock,
          const cli::LaunchOptions& words, TulvaneApp*& running)
{
    UserInterface windows({.makePanel = desktop.makeIndicatorPanel, .scheduler = scheduler, .clock = clock});
    TulvaneApp app(
        desktop, appOptions(*desktop.defaults),
        {.indicator = windows.indicator(), .windows = windows, .bringToFront = [&windows, &running] {
             return running && bringVisibleWindowsToFront(windows.settingsWindow().window());
         }});
    UiContext context = app.uiContext([&desktop] { startAnew(*desktop.processes); });
    context.windows = &windows;
    installInterfaceLanguage(context.settings.appLanguage());
    windows.attach(context);
    const MenuBarMenu menu(context, *desktop.statusItem, [] { QCoreApplication::quit(); });
    running = &app;
    QObject::connect(&app.controller(), &DictationController::phaseChanged, &app,
                     [&remote](const Phase& phase) { remote.announcePhase(nameOf(phase.kind)); });
    const cli::InterruptWatcher signalWatch(-1, [] { QCoreApplication::quit(); });
    endWithDesktop(desktop);
    const int status = run(app, windows, words);
    running = nullptr;
    windows.detach();
    return status;
}

} // namespace

int runResidentProgram(const cli::LaunchOptions& words, cli::Console& console)
{
    static const SystemClock clock;
    EventLoopScheduler scheduler;
    const auto services = openServices(clock, console);
    RemoteControl& remote = services->remote();
    TulvaneApp* running = nullptr;
    const auto claim = remote.claim([&running](RemoteRequest request, const QString& argument) {
        return running ? running->answer(request, argument) : QJsonObject();
    });
    if (claim == RemoteControl::Claim::taken)
        return handOver(remote, words, console);
    const auto desktop = openDesktop(services->defaults(), scheduler);
    if (!desktop)
        return cli::fail(console, desktop.error().text());
    return runOn(**desktop, remote, scheduler, clock, words, running);
}

} // namespace tulvane
