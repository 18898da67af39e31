#include <app/cli/CleanCommand.h>
#include <app/cli/CommandSyntax.h>
#include <app/cli/DictateCommand.h>
#include <app/cli/DoctorCommand.h>
#include <app/cli/ForgetCommand.h>
#include <app/cli/InterruptWatcher.h>
#include <app/cli/LaunchOptions.h>
#include <app/cli/ModelsCommand.h>
#include <app/cli/ProgramCommands.h>
#include <app/cli/RemoteCommand.h>
#include <app/cli/RemoteRun.h>
#include <app/cli/SettingsCommand.h>
#include <app/cli/StatsCommand.h>
#include <app/cli/TranscribeCommand.h>
#include <app/program/DesktopDiagnostics.h>
#include <app/program/Migration.h>
#include <app/program/ProgramRecognizer.h>
#include <app/program/ServiceOptions.h>
#include <base/Clock.h>
#include <base/async/WaitFor.h>
#include <insertion/PasteTable.h>
#include <models/ModelHub.h>
#include <models/ModelManager.h>
#include <ports/ProgramServices.h>
#include <ports/RemoteControl.h>
#include <ports/UserDefaults.h>
#include <settings/AppSettings.h>
#include <stats/StatsStore.h>

#include <QFile>
#include <QStandardPaths>

#include <unistd.h>

#include <cerrno>

namespace tulvane {

namespace {

const SystemClock systemClock;

std::unique_ptr<ProgramServices> openServices()
{
    return openProgramServices(serviceOptions(), systemClock);
}

/// The stored settings, opened when a command first needs them; trouble with the file is told at once.
class StoredSettings final {
public:
    StoredSettings(ProgramServices& services, cli::Console& console) : m_defaults(services.defaults())
    {
        const auto tell = [&console](const DefaultsError& error) {
            console.err << "tulvane: " << error.description() << Qt::endl;
        };
        m_settings.emplace(*m_defaults);
        if (m_settings->trouble())
            tell(*m_settings->trouble());
        QObject::connect(&*m_settings, &AppSettings::troubled, &*m_settings, tell);
    }
    /// What the earlier product kept comes over before a command writes.
    void migrate() { Migration(*m_defaults, Migration::standardParent()).run(); }
    [[nodiscard]] AppSettings& operator*() { return *m_settings; }
    /// A text that is no setting of the interface's; empty where there is none.
    [[nodiscard]] QString text(const char* key) const
    {
        return m_defaults->value(QLatin1String(key)).toString();
    }

private:
    std::shared_ptr<UserDefaults> m_defaults;
    std::optional<AppSettings> m_settings;
};

std::optional<QString> catalogueFile(const QString& id)
{
    if (!WhisperModel::find(id))
        return std::nullopt;
    return ModelFolders::standard().modelFile(id);
}

Recognizer& recognizer()
{
    // For as long as the process: the recogniser keeps asking how much memory is free.
    static const std::shared_ptr<ProgramServices> services = openServices();
    return programRecognizer({services, &services->memory()});
}

int transcribe(const QStringList& arguments, cli::Console& console)
{
    const auto services = openServices();
    StoredSettings settings(*services, console);
    const cli::RecognitionContext context{.settings = *settings,
                                          .recognizer = recognizer,
                                          .folders = ProgramFolders::ofThisProgram(),
                                          .catalogueFile = catalogueFile};
    return cli::runTranscribe(arguments, context, console);
}

int dictate(const QStringList& arguments, cli::Console& console)
{
    const auto services = openServices();
    StoredSettings settings(*services, console);
    settings.migrate();
    StatsStore stats;
    const cli::DictationContext context{.recognition = {.settings = *settings,
                                                        .recognizer = recognizer,
                                                        .folders = ProgramFolders::ofThisProgram(),
                                                        .catalogueFile = catalogueFile},
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

int statistics(const QStringList& arguments, cli::Console& console)
{
    const auto services = openServices();
    StoredSettings settings(*services, console);
    const StatsStore store;
    return cli::runStats(arguments, {store, (*settings).typingWordsPerMinute(), systemClock}, console);
}

int remote(const QString& name, const QStringList& arguments, cli::Console& console)
{
    return cli::runRemote(name, arguments, openServices()->remote(), console);
}

ModelFacts selectedModel(const AppSettings& settings)
{
    const WhisperModel model =
        WhisperModel::find(settings.selectedModelID()).value_or(WhisperModel::fallback());
    const QString file = ModelFolders::standard().modelFile(model.id);
    return {.id = model.id, .file = QFile::exists(file) ? file : QString()};
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
    session += permissionDiagnostics(permissions);
    dictation += insertionDiagnostic(settings.insertionMethod(), permissions, facts.hasAccessibilityBus);
    dictation +=
        pasteTableDiagnostics(pasteTableProblems(services.defaults()->value(terminalWindowClassesKey)));
    dictation += modelDiagnostic(selectedModel(settings));
    dictation += acceleratorDiagnostic(programComputingDevices());
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

cli::Command remoteCommand(const char* name, const char* summary)
{
    const QString word = QString::fromLatin1(name);
    return {word, QString::fromLatin1(summary), [word](const QStringList& arguments, cli::Console& console) {
                return remote(word, arguments, console);
            }};
}

} // namespace

std::vector<cli::Command> programCommands()
{
    return {
        {QStringLiteral("transcribe"), QStringLiteral("Turns a sound file into clean text."), transcribe},
        {QStringLiteral("dictate"), QStringLiteral("Turns what you say into clean text."), dictate},
        {QStringLiteral("clean"), QStringLiteral("Cleans a transcript from standard input."), cli::runClean},
        {QStringLiteral("models"), QStringLiteral("Shows, fetches and removes speech models."), models},
        {QStringLiteral("settings"), QStringLiteral("Lists, reads or changes the stored settings."),
         storedSettings},
        remoteCommand("start", "Begins a dictation in the running program."),
        remoteCommand("stop", "Ends it and inserts what was said."),
        remoteCommand("toggle", "Whichever of the two fits: for a desktop's own key bindings."),
        remoteCommand("cancel", "Abandons it."),
        remoteCommand("quit", "Ends the running program."),
        remoteCommand("status", "Says what the running program is doing."),
        {QStringLiteral("doctor"), QStringLiteral("Says what works here, and what to do about the rest."),
         doctor},
        {QStringLiteral("stats"), QStringLiteral("Shows how much has been dictated."), statistics},
        {QStringLiteral("forget"), QStringLiteral("Removes everything that Tulvane has stored."), forget},
    };
}

int startProgram(const QStringList& arguments, cli::Console& console)
{
    // Wrong words are found here, where the answer comes at once.
    if (const auto words = cli::LaunchOptions::parse(arguments, console); !words)
        return words.error();
    console.out.flush();
    const QByteArray file = QFile::encodeName(ProgramFolders::ofThisProgram().desktopProgram());
    std::vector<QByteArray> owned{file};
    owned.reserve(static_cast<std::size_t>(arguments.size()) + 1);
    for (const QString& argument : arguments)
        owned.push_back(argument.toLocal8Bit());
    std::vector<char*> words;
    words.reserve(owned.size() + 1);
    for (QByteArray& word : owned)
        words.push_back(word.data());
    words.push_back(nullptr);
    execv(file.constData(), words.data());
    return cli::fail(console, QStringLiteral("The program %1 cannot be started: %2")
                                  .arg(QString::fromUtf8(file), qt_error_string(errno)));
}

} // namespace tulvane
