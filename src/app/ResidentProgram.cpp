#include <app/LinuxDesktop.h>
#include <app/Relaunch.h>
#include <app/ResidentProgram.h>
#include <app/TulvaneApp.h>
#include <app/cli/InterruptWatcher.h>
#include <app/program/ProgramFolders.h>
#include <base/Log.h>
#include <base/async/WaitFor.h>
#include <models/ModelHub.h>
#include <platform/linux/desktop/DBusRemoteControl.h>
#include <platform/linux/storage/JsonUserDefaults.h>
#include <settings/InterfaceLanguage.h>
#include <ui/UserInterface.h>
#include <ui/indicator/HUDController.h>
#include <ui/windows/SettingsWindowController.h>
#include <ui/windows/VisibleWindows.h>

#include <QCoreApplication>
#include <QQuickView>

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

void endWithServer(LinuxDesktop& desktop)
{
    desktop.setEnded([] {
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

} // namespace

int runResidentProgram(const cli::LaunchOptions& words, cli::Console& console)
{
    static const SystemClock clock;
    EventLoopScheduler scheduler;
    DBusRemoteControl remote;
    JsonUserDefaults defaults(JsonUserDefaults::standardFolder(), QStringLiteral("com.dunio.Tulvane"), clock);
    defaults.setTroubleHandler([&console](const DefaultsError& error) {
        console.err << "tulvane: " << error.description() << Qt::endl;
    });
    TulvaneApp* running = nullptr;
    const auto claim = remote.claim([&running](RemoteRequest request, const QString& argument) {
        return running ? running->answer(request, argument) : QJsonObject();
    });
    if (claim == RemoteControl::Claim::taken)
        return handOver(remote, words, console);

    const auto desktop = LinuxDesktop::open(defaults, scheduler);
    if (!desktop)
        return cli::fail(console, desktop.error());
    UserInterface windows(
        {.makePanel = &LinuxDesktop::makeIndicatorPanel, .scheduler = scheduler, .clock = clock});
    const Desktop ports = (*desktop)->ports();
    TulvaneApp app(
        ports, appOptions(defaults),
        {.indicator = windows.indicator(), .windows = windows, .bringToFront = [&windows, &running] {
             return running && bringVisibleWindowsToFront(windows.settingsWindow().window());
         }});
    const UiContext context = app.uiContext([&ports] { startAnew(ports.processes); });
    installInterfaceLanguage(context.settings.appLanguage());
    windows.attach(context);
    windows.showStatusItem((*desktop)->statusItem(), [] { QCoreApplication::quit(); });
    running = &app;
    QObject::connect(&app.controller(), &DictationController::phaseChanged, &app,
                     [&remote](const Phase& phase) { remote.announcePhase(nameOf(phase.kind)); });
    const cli::InterruptWatcher signalWatch(-1, [] { QCoreApplication::quit(); });
    endWithServer(**desktop);
    const int status = run(app, windows, words);
    running = nullptr;
    windows.detach();
    return status;
}

} // namespace tulvane
