#include <app/cli/CleanCommand.h>
#include <app/cli/CommandSyntax.h>
#include <app/cli/DevicesCommand.h>
#include <app/cli/DictateCommand.h>
#include <app/cli/DoctorCommand.h>
#include <app/cli/ForgetCommand.h>
#include <app/cli/InterruptWatcher.h>
#include <app/cli/LocalCommands.h>
#include <app/cli/ModelsCommand.h>
#include <app/cli/ProgramCommands.h>
#include <app/cli/RemoteCommand.h>
#include <app/cli/RemoteRun.h>
#include <app/cli/SettingsCommand.h>
#include <app/cli/StoredSettings.h>
#include <app/program/DesktopDiagnostics.h>
#include <app/program/GraphicsDiagnostics.h>
#include <app/program/ProgramRecognizer.h>
#include <app/program/ServiceOptions.h>
#include <audio/files/SoundFile.h>
#include <base/Clock.h>
#include <base/async/WaitFor.h>
#include <insertion/PasteTable.h>
#include <models/ModelHub.h>
#include <models/ModelManager.h>
#include <ports/GraphicsCards.h>
#include <ports/HelperProcess.h>
#include <ports/ProgramServices.h>
#include <ports/RemoteControl.h>
#include <speech/device/DeviceChoice.h>
#include <stats/StatsStore.h>

#include <QFile>
#include <QStandardPaths>

#include <unistd.h>

namespace tulvane {

namespace {

const SystemClock systemClock;

std::unique_ptr<ProgramServices> openServices()
{
    return openProgramServices(serviceOptions(), systemClock);
}

int transcribe(const QStringList& arguments, cli::Console& console)
{
    return transcribe(arguments, readSoundFile, console);
}

int dictate(const QStringList& arguments, cli::Console& console)
{
    const auto services = openServices();
    StoredSettings settings(*services, console);
    settings.migrate();
    StatsStore stats;
    const cli::DictationContext context{.recognition = recognitionContext(*settings, false),
                                        .settings = *settings,
                                        .input = services->microphone(),
                                        .stats = stats,
                                        .keyboard = STDIN_FILENO};
    return cli::runDictate(arguments, context, console);
}

int models(const QStringList& arguments, cli::Console& console)
{
    const auto services = openServices();
    StoredSettings settings(*services, console);
    settings.migrate();
    const ModelFolders folders = ModelFolders::standard();
    const QUrl hub = modelHubURL(qEnvironmentVariable(modelHubVariable), settings.text(modelHubSetting));
    ModelManager manager({.folders = folders, .hub = hub}, services->transfers());
    std::optional<cli::InterruptWatcher> interrupts;
    const cli::ModelsContext context{.manager = manager,
                                     .selectedModelID = (*settings).selectedModelID(),
                                     .onInterrupt = [&interrupts](const std::function<void()>& cancel) {
                                         interrupts.emplace(-1, cancel);
                                     }};
    return cli::runModels(arguments, context, console);
}

int storedSettings(const QStringList& arguments, cli::Console& console)
{
    const auto services = openServices();
    // The running program's settings are live: it makes the change itself.
    if (const auto status = cli::runThere(arguments, RemoteRequest::settings, services->remote(), console))
        return *status;
    StoredSettings settings(*services, console);
    if (arguments.value(0) == u"set")
        settings.migrate();
    QStringList models;
    for (const WhisperModel& model : WhisperModel::all())
        models.append(model.id);
    return cli::runSettings(arguments, console, *settings, models);
}

int devices(const QStringList& arguments, cli::Console& console)
{
    const auto services = openServices();
    StoredSettings settings(*services, console);
    const cli::DevicesContext context{.devices = [&] { return programDevices(*services->helpers()); },
                                      .processors = programComputingDevices(),
                                      .wanted = (*settings).computingDevice(),
                                      .isInstalled = hasDeviceBackend()};
    return cli::runDevices(arguments, context, console);
}

int remote(const QString& name, const QStringList& arguments, cli::Console& console)
{
    return cli::runRemote(name, arguments, openServices()->remote(), console);
}

ModelFacts selectedModel(const AppSettings& settings)
{
    const WhisperModel model = WhisperModel::findOrFallback(settings.selectedModelID());
    const QString file = ModelFolders::standard().modelFile(model.id);
    return {.id = model.id, .file = QFile::exists(file) ? file : QString()};
}

GraphicsFacts graphicsFacts(ProgramServices& services, const AppSettings& settings, const QString& model)
{
    GraphicsFacts facts{.cards = services.cards()->cards(),
                        .isInstalled = hasDeviceBackend(),
                        .wanted = settings.computingDevice(),
                        .neededBytes = model.isEmpty() ? 0 : deviceMemoryOf(model)};
    if (facts.isInstalled && facts.wanted != processorAlone && !facts.cards.isEmpty())
        facts.devices = programDevices(*services.helpers());
    if (const auto device = chooseDevice(facts.devices, facts.wanted, facts.neededBytes))
        facts.trial = programTrials().passed(*device);
    return facts;
}

Examination examine(ProgramServices& services, const AppSettings& settings)
{
    const SessionFacts facts = services.session();
    const PrivacyPermissions& permissions = services.permissions();
    Examination examination{.session = sessionDiagnostics(facts), .dictation = {}};
    Diagnostics& session = examination.session;
    Diagnostics& dictation = examination.dictation;
    // Asking for the microphone waits for the connection.
    const Diagnostic found = microphoneDiagnostic(services.microphone());
    session += soundServerDiagnostic(services.soundServer());
    session += found;
    session += permissionDiagnostics(permissions, settings.modifierHotkey() != ModifierHotkey::none);
    dictation += insertionDiagnostic(settings.insertionMethod(), permissions, facts.hasAccessibilityBus);
    dictation +=
        pasteTableDiagnostics(pasteTableProblems(services.defaults()->value(terminalWindowClassesKey)));
    dictation += modelDiagnostic(selectedModel(settings));
    dictation += acceleratorDiagnostic(programComputingDevices());
    dictation += graphicsDiagnostic(graphicsFacts(services, settings, selectedModel(settings).file));
    return examination;
}

int doctor(const QStringList& arguments, cli::Console& console)
{
    const auto services = openServices();
    StoredSettings settings(*services, console);
    const cli::DoctorContext context{.remote = services->remote(),
                                     .examine = [&] { return examine(*services, *settings); }};
    return cli::runDoctor(arguments, context, console);
}

/// What a run of the program leaves behind, whichever part of it ran.
QStringList traces()
{
    const QString config = QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation);
    const QString data = QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation);
    const QString cache = QStandardPaths::writableLocation(QStandardPaths::GenericCacheLocation);
    return {config + QStringLiteral("/com.dunio.Tulvane.json*"),
            config + QStringLiteral("/autostart/com.dunio.Tulvane.desktop"),
            data + QStringLiteral("/Tulvane"), cache + QStringLiteral("/Tulvane")};
}

int forget(const QStringList& arguments, cli::Console& console)
{
    const auto services = openServices();
    // One that does not answer runs, too.
    const auto isRunning = [&services] {
        const auto answer = waitFor(services->remote().ask(RemoteRequest::status, {}));
        return answer ||
               (answer.error() != RemoteError::notRunning && answer.error() != RemoteError::noConnection);
    };
    return cli::runForget(arguments, {.traces = traces(), .isProgramRunning = isRunning}, console);
}

} // namespace

std::map<QString, cli::Run> programCommands()
{
    std::map<QString, cli::Run> runs{
        {QStringLiteral("transcribe"), qOverload<const QStringList&, cli::Console&>(transcribe)},
        {QStringLiteral("dictate"), dictate},
        {QStringLiteral("clean"), cli::runClean},
        {QStringLiteral("models"), models},
        {QStringLiteral("devices"), devices},
        {QStringLiteral("settings"), storedSettings},
        {QStringLiteral("doctor"), doctor},
        {QStringLiteral("stats"), showStatistics},
        {QStringLiteral("forget"), forget},
    };
    for (const char* const name : cli::remoteWords) {
        const QString word = QString::fromLatin1(name);
        runs.emplace(word, [word](const QStringList& arguments, cli::Console& console) {
            return remote(word, arguments, console);
        });
    }
    return runs;
}

} // namespace tulvane
