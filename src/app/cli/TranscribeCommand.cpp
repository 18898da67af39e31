#include <app/cli/RecognitionWords.h>
#include <app/cli/TranscribeCommand.h>
#include <audio/files/SoundFile.h>
#include <settings/AppSettings.h>
#include <speech/CleanTranscript.h>
#include <speech/WhisperEngine.h>

#include <QElapsedTimer>
#include <QJsonDocument>
#include <QJsonObject>

namespace tulvane::cli {

namespace {

struct Recognised {
    QString raw;
    QString language;
    double loadSeconds = 0;
    double transcribeSeconds = 0;
};

Result<Recognised, EngineError> recognise(std::vector<float> samples, const RecognitionWords& words,
                                          const RecognitionContext& context)
{
    Recognised recognised;
    QElapsedTimer timer;
    timer.start();
    // Nothing else happens in this process, so blocking on the engine's worker is as good as an event loop.
    WhisperEngine engine(context.folders.backends, context.memory);
    if (const auto loaded = engine.load(words.modelFile).takeResult(); !loaded)
        return failure(loaded.error());
    recognised.loadSeconds = static_cast<double>(timer.nsecsElapsed()) / 1e9;

    timer.restart();
    auto text = engine.transcribe(std::move(samples), words.options).takeResult();
    if (!text)
        return failure(text.error());
    recognised.transcribeSeconds = static_cast<double>(timer.nsecsElapsed()) / 1e9;
    recognised.raw = *std::move(text);
    recognised.language = engine.lastLanguage();
    return recognised;
}

void printJson(const Recognised& recognised, const QString& text, double audioSeconds, Console& console)
{
    const QJsonObject object{{QStringLiteral("text"), text},
                             {QStringLiteral("raw"), recognised.raw},
                             {QStringLiteral("language"), recognised.language},
                             {QStringLiteral("audioSeconds"), audioSeconds},
                             {QStringLiteral("loadSeconds"), recognised.loadSeconds},
                             {QStringLiteral("transcribeSeconds"), recognised.transcribeSeconds}};
    console.out << QString::fromUtf8(QJsonDocument(object).toJson(QJsonDocument::Compact)) << Qt::endl;
}

} // namespace

int runTranscribe(const QStringList& arguments, const RecognitionContext& context, Console& console)
{
    CommandSyntax syntax(QStringLiteral("transcribe"), QStringLiteral("Turns a sound file into clean text."));
    syntax.addWord(QStringLiteral("FILE"), QStringLiteral("Any common sound file."));
    syntax.setWordCount(1, 1);
    addRecognitionWords(syntax);
    if (const auto status = syntax.parse(arguments, console))
        return *status;
    const auto words = readRecognitionWords(syntax, context, console);
    if (!words)
        return words.error();

    auto sound = readSoundFile(syntax.words().constFirst());
    if (!sound)
        return fail(console, sound.error().description());
    const auto recognised = recognise(std::move(sound->samples), *words, context);
    if (!recognised)
        return fail(console, recognised.error().description());

    // The line's end stands where the cursor's trailing space would.
    const QString text = cleanTranscript(
        recognised->raw, {.autoCapitalize = context.settings.autoCapitalize(), .appendTrailingSpace = false});
    if (words->json)
        printJson(*recognised, text, sound->seconds, console);
    else if (words->raw)
        console.out << recognised->raw << Qt::endl;
    else if (!text.isEmpty())
        console.out << text << Qt::endl;
    if (text.isEmpty())
        console.err << "Nothing recognised" << Qt::endl;
    return ExitStatus::done;
}

} // namespace tulvane::cli
