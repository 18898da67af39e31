#include <app/LinuxDesktop.h>
#include <app/Relaunch.h>
#include <app/ResidentProgram.h>
#include <app/TulvaneApp.h>
#include <app/cli/InterruptWatcher.h>
#include <app/program/ProgramFolders.h>
#include <app/program/ProgramRecognizer.h>
#include <base/Log.h>
#include <base/async/WaitFor.h>
#include <models/ModelHub.h>
#include <platform/linux/desktop/DBusRemoteControl.h>
#include <platform/linux/process/ProcessMemory.h>
#include <platform/linux/storage/JsonUserDefaults.h>
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
    return {.version = QCoreApplication::applicationVersion(),
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
    TulvaneApp* running = nullptr;
    const auto answer = [&running](RemoteRequest request, const QString& argument) {
        return running ? running->answer(request, argument) : QJsonObject();
    };
    if (const auto status = claimOrHandOver(remote, answer, words, console))
        return *status;

    const auto desktop = LinuxDesktop::open(defaults, scheduler);
    if (!desktop)
        return cli::fail(console, desktop.error());
    UserInterface windows(
        {.makePanel = &LinuxDesktop::makeIndicatorPanel, .scheduler = scheduler, .clock = clock});
    const Desktop ports = (*desktop)->ports();
    TulvaneApp app(ports, programRecognizer(std::make_unique<ProcessMemory>()), appOptions(defaults),
                   {.indicator = windows.indicator(),
                    .windows = windows,
                    .bringToFront =
                        [&windows, &running] {
                            return running && bringVisibleWindowsToFront(windows.settingsWindow().window());
                        },
                    .restoreMinimized = &restoreMinimizedWindows});
    UiContext context = app.uiContext([&ports] { startAnew(ports.processes); });
    context.windows = &windows;
    installInterfaceLanguage(context.settings.appLanguage());
    windows.attach(context);
    windows.showStatusItem((*desktop)->statusItem(), [] { QCoreApplication::quit(); });
    running = &app;
    QObject::connect(&app.controller(), &DictationController::phaseChanged, &app,
                     [&remote](const Phase& phase) { remote.announcePhase(nameOf(phase.kind)); });
    const cli::InterruptWatcher signalWatch(-1, [] { QCoreApplication::quit(); });
    endWithServer(**desktop);
    // A start from here on waits for the end of this process.
    QObject::connect(QCoreApplication::instance(), &QCoreApplication::aboutToQuit, &app,
                     [&running] { running = nullptr; });
    const int status = run(app, windows, words);
    windows.detach();
    return status;
}

} // namespace tulvane
