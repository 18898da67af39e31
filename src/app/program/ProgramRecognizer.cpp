#include <app/program/ProgramFolders.h>
#include <app/program/ProgramRecognizer.h>
#include <audio/files/PlainWave.h>
#include <base/Log.h>
#include <ports/GraphicsCards.h>
#include <ports/HelperProcess.h>
#include <ports/LocalServices.h>
#include <ports/SystemMemory.h>
#include <speech/ConfinedRunner.h>
#include <speech/ThreadCount.h>
#include <speech/device/SafeRunner.h>
#include <speech/whisper/ComputingDevices.h>
#include <speech/whisper/ModelFile.h>
#include <speech/whisper/ModelFileCheck.h>
#include <speech/whisper/WhisperEngine.h>

#include <QCoreApplication>
#include <QFile>
#include <QStandardPaths>

namespace tulvane {

namespace {

DeviceRunner::Start helperStart(std::shared_ptr<const HelperProcesses> helpers)
{
    return [helpers = std::move(helpers), program = ProgramFolders::ofThisProgram().computeHelper()] {
        return helpers->start(program, {});
    };
}

/// The bundled model hears the bundled voice.
DeviceTrial::Task trialTask()
{
    const ProgramFolders folders = ProgramFolders::ofThisProgram();
    const auto samples = [file = folders.demoSpeech(QStringLiteral("nb"))] {
        auto sound = readPlainWave(file);
        return sound ? std::move(sound->samples) : std::vector<float>();
    };
    return {.modelFile = folders.demoModel(),
            .samples = samples,
            .options = {.language = QStringLiteral("no"), .threadCount = recommendedThreadCount()}};
}

/// Model files come from elsewhere, and the library that reads them is large.
std::unique_ptr<ModelRunner> confined(std::unique_ptr<ModelRunner> processor, const ConfineThread& confine)
{
    return std::make_unique<ConfinedRunner>(std::move(processor), [confine] {
        const Confinement taken = confine();
        if (!taken.files || !taken.calls)
            qCInfo(lcWhisper) << "this system does not confine the engine's thread: files" << taken.files
                              << "calls" << taken.calls;
    });
}

/// Without a backend for graphics cards.
WhisperEngine::MakeRunner processorMaker(const RecognizerServices& services)
{
    return [confine = services.confinement](std::unique_ptr<ModelRunner> processor) {
        return confined(std::move(processor), confine);
    };
}

WhisperEngine::MakeRunner runnerMaker(const RecognizerServices& services)
{
    const TrialRecord record = programTrials();
    ComputingStatus& status = programComputing();
    const auto start = helperStart(services.helpers);
    return [start, cards = services.cards, waits = services.waitsForTrial, record,
            confine = services.confinement, trial = std::make_shared<const DeviceTrial>(start, trialTask()),
            &status](std::unique_ptr<ModelRunner> processor) -> std::unique_ptr<ModelRunner> {
        return std::make_unique<SafeRunner>(
            SafeRunner::Parts{.processor = confined(std::move(processor), confine),
                              .device = std::make_unique<DeviceRunner>(start),
                              .wanted = status.wanted(),
                              .neededMemory = deviceMemoryOf,
                              .hasCard = [cards] { return !cards->cards().isEmpty(); },
                              .trial = trial,
                              .waitsForTrial = waits,
                              .record = record,
                              .onPlace = [&status](const ComputingPlace& place) { status.publish(place); }});
    };
}

} // namespace

// What cannot be read takes nothing: loading it says why.
qint64 deviceMemoryOf(const QString& modelFile)
{
    const auto file = openModelFile(modelFile);
    if (!file)
        return 0;
    const auto facts = checkModelFile(**file);
    return facts ? facts->neededMemory() : 0;
}

TrialRecord programTrials()
{
    const QString cache = QStandardPaths::writableLocation(QStandardPaths::GenericCacheLocation);
    return {cache + QStringLiteral("/Tulvane/computing-devices.json"),
            QCoreApplication::applicationVersion()};
}

RecognizerServices RecognizerServices::of(const std::shared_ptr<LocalServices>& services)
{
    return {.memory = {services, &services->memory()},
            .helpers = services->helpers(),
            .cards = services->cards(),
            .confinement = services->confinement()};
}

Recognizer& programRecognizer(const RecognizerServices& services)
{
    static const auto* const kept = new RecognizerServices(services);
    static auto* const engine = [] {
        const QString backends = ProgramFolders::ofThisProgram().backends;
        return hasDeviceBackend() ? new WhisperEngine(backends, *kept->memory, runnerMaker(*kept))
                                  : new WhisperEngine(backends, *kept->memory, processorMaker(*kept));
    }();
    return *engine;
}

ComputingStatus& programComputing()
{
    static auto* const status = new ComputingStatus;
    return *status;
}

QStringList programComputingDevices()
{
    return computingDevices(ProgramFolders::ofThisProgram().backends);
}

ComputingDevices programDevices(const HelperProcesses& helpers)
{
    if (!hasDeviceBackend())
        return {};
    const QString program = ProgramFolders::ofThisProgram().computeHelper();
    return DeviceRunner([&helpers, program] { return helpers.start(program, {}); }).devices();
}

bool hasDeviceBackend()
{
    return QFile::exists(ProgramFolders::ofThisProgram().deviceBackend());
}

} // namespace tulvane
