#include <app/cli/CleanCommand.h>
#include <app/cli/LocalCommands.h>
#include <app/cli/RemoteCommand.h>
#include <app/cli/StatsCommand.h>
#include <app/cli/StoredSettings.h>
#include <app/program/ProgramRecognizer.h>
#include <audio/files/PlainWave.h>
#include <base/Clock.h>
#include <models/ModelFolders.h>
#include <models/WhisperModel.h>
#include <ports/LocalServices.h>
#include <ports/RemoteControl.h>
#include <stats/StatsStore.h>

#include <algorithm>

namespace tulvane {

namespace {

const SystemClock systemClock;

std::optional<QString> catalogueFile(const QString& id)
{
    if (!WhisperModel::find(id))
        return std::nullopt;
    return ModelFolders::standard().modelFile(id);
}

Recognizer& recognizer(bool waitsForTrial)
{
    // For as long as the process: the recogniser keeps asking how much memory is free.
    static const std::shared_ptr<LocalServices> services = openLocalServices(systemClock);
    RecognizerServices used = RecognizerServices::of(services);
    used.waitsForTrial = waitsForTrial;
    return programRecognizer(used);
}

} // namespace

cli::RecognitionContext recognitionContext(const AppSettings& settings, bool waitsForTrial)
{
    return {.settings = settings,
            .recognizer = [waitsForTrial]() -> Recognizer& { return recognizer(waitsForTrial); },
            .folders = ProgramFolders::ofThisProgram(),
            .catalogueFile = catalogueFile,
            .computing = programComputing()};
}

int transcribe(const QStringList& arguments, const cli::SoundReader& readSound, cli::Console& console)
{
    const auto services = openLocalServices(systemClock);
    StoredSettings settings(*services, console);
    return cli::runTranscribe(arguments, recognitionContext(*settings, true), readSound, console);
}

int showStatistics(const QStringList& arguments, cli::Console& console)
{
    const auto services = openLocalServices(systemClock);
    StoredSettings settings(*services, console);
    const StatsStore store;
    return cli::runStats(arguments, {store, (*settings).typingWordsPerMinute(), systemClock}, console);
}

std::map<QString, cli::Run> localCommands(const cli::Run& others)
{
    const auto transcribePlain = [others](const QStringList& arguments, cli::Console& console) {
        if (std::ranges::any_of(arguments, isPlainWave))
            return transcribe(arguments, readPlainWave, console);
        return others(QStringList{QStringLiteral("transcribe")} + arguments, console);
    };
    std::map<QString, cli::Run> runs{
        {QStringLiteral("transcribe"), transcribePlain},
        {QStringLiteral("clean"), cli::runClean},
        {QStringLiteral("stats"), showStatistics},
    };
    for (const char* const name : cli::remoteWords) {
        const QString word = QString::fromLatin1(name);
        runs.emplace(word, [word, others](const QStringList& arguments, cli::Console& console) {
            const auto caller = openLocalServices(systemClock)->caller();
            return caller ? cli::runRemote(word, arguments, *caller, console)
                          : others(QStringList{word} + arguments, console);
        });
    }
    return runs;
}

} // namespace tulvane
