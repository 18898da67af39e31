#include <app/cli/RecognitionArguments.h>
#include <settings/AppSettings.h>
#include <speech/ThreadCount.h>
#include <speech/device/ComputingStatus.h>

#include <QFileInfo>

namespace tulvane::cli {

namespace {

constexpr int mostThreads = 256;

/// The model's file: the demo model, a catalogue entry's, or a path; in that order, so that a stray file
/// named like an identifier does not take its place. A path that holds a separator is always a path.
Result<QString, QString> findModel(const QString& wanted, const RecognitionContext& context)
{
    if (wanted == u"demo")
        return context.folders.demoModel();
    const std::optional<QString> file = wanted.contains(u'/') ? std::nullopt : context.catalogueFile(wanted);
    if (!file)
        return wanted;
    if (!QFileInfo::exists(*file))
        return failure(QStringLiteral("The speech model has not been downloaded yet. (%1; tulvane models "
                                      "download %1, or --model demo to try the program)")
                           .arg(wanted));
    return *file;
}

} // namespace

void addRecognitionArguments(CommandSyntax& syntax)
{
    syntax.addOption(QStringLiteral("model"), QStringLiteral("FILE-OR-ID"),
                     QStringLiteral("A ggml model file, a model's identifier, or “demo”."));
    syntax.addOption(QStringLiteral("language"), QStringLiteral("CODE"),
                     QStringLiteral("no, nn, en, or auto to detect it."));
    syntax.addOption(QStringLiteral("prompt"), QStringLiteral("TEXT"),
                     QStringLiteral("Names and jargon that may be spoken."));
    syntax.addOption(QStringLiteral("threads"), QStringLiteral("N"), QStringLiteral("Processor threads."));
    syntax.addOption(QStringLiteral("device"), QStringLiteral("NAME"),
                     QStringLiteral("auto, cpu, or a graphics card (tulvane devices)."));
    syntax.addFlag(QStringLiteral("raw"), QStringLiteral("Print what was recognised, without cleanup."));
    syntax.addFlag(QStringLiteral("json"), QStringLiteral("Print one JSON object with the figures."));
    syntax.setRemark(
        QStringLiteral("What is not given is taken from the stored settings. The model “demo” "
                       "comes with the program; it knows\nsimple sentences spoken by a synthetic "
                       "voice, and nothing more."));
}

Result<RecognitionArguments, int>
readRecognitionArguments(const CommandSyntax& syntax, const RecognitionContext& context, Console& console)
{
    RecognitionArguments result;
    result.raw = syntax.isSet(QStringLiteral("raw"));
    result.json = syntax.isSet(QStringLiteral("json"));

    result.options.language = rawValue(context.settings.language());
    if (syntax.isSet(QStringLiteral("language"))) {
        const QString code = syntax.value(QStringLiteral("language"));
        const auto language = fromRawValue<TranscriptionLanguage>(code);
        if (!language)
            return failure(syntax.usageError(
                console, QStringLiteral("“%1” is not a language: no, nn, en or auto.").arg(code)));
        result.options.language = code;
    }
    result.options.initialPrompt = syntax.isSet(QStringLiteral("prompt"))
                                       ? syntax.value(QStringLiteral("prompt"))
                                       : context.settings.vocabularyPrompt();
    result.options.threadCount = recommendedThreadCount();
    if (syntax.isSet(QStringLiteral("threads"))) {
        bool isNumber = false;
        const int threads = syntax.value(QStringLiteral("threads")).toInt(&isNumber);
        if (!isNumber || threads < 1 || threads > mostThreads)
            return failure(syntax.usageError(
                console, QStringLiteral("--threads takes a whole number from 1 to %1.").arg(mostThreads)));
        result.options.threadCount = threads;
    }
    const QString wanted = syntax.isSet(QStringLiteral("model")) ? syntax.value(QStringLiteral("model"))
                                                                 : context.settings.selectedModelID();
    const auto file = findModel(wanted, context);
    if (!file)
        return failure(fail(console, file.error()));
    result.modelFile = *file;
    context.computing.want(syntax.isSet(QStringLiteral("device")) ? syntax.value(QStringLiteral("device"))
                                                                  : context.settings.computingDevice());
    return result;
}

void warnOfProcessor(const RecognitionContext& context, Console& console)
{
    const ComputingPlace place = context.computing.place();
    if (place.device.isEmpty() && !place.reason.isEmpty() &&
        (place.isGivenUp || context.computing.wanted()->name() != anyDevice))
        console.err << "tulvane: computing on the processor: " << place.reason << Qt::endl;
}

} // namespace tulvane::cli
