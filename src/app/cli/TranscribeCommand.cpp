#include <app/cli/CommandSyntax.h>
#include <app/cli/RecognitionOutput.h>
#include <app/cli/RecognitionWords.h>
#include <app/cli/TranscribeCommand.h>
#include <audio/files/SoundFile.h>
#include <settings/AppSettings.h>
#include <speech/CleanTranscript.h>
#include <speech/WhisperEngine.h>

#include <QElapsedTimer>

namespace tulvane::cli {

namespace {

double secondsOf(const QElapsedTimer& timer)
{
    return static_cast<double>(timer.nsecsElapsed()) / 1e9;
}

Result<Recognised, EngineError> recognise(Sound sound, const RecognitionWords& words,
                                          const RecognitionContext& context)
{
    Recognised recognised;
    recognised.audioSeconds = sound.seconds;
    QElapsedTimer timer;
    timer.start();
    // Nothing else happens in this process, so blocking on the engine's worker is as good as an event loop.
    WhisperEngine engine(context.folders.backends, context.memory);
    if (const auto loaded = engine.load(words.modelFile).takeResult(); !loaded)
        return failure(loaded.error());
    recognised.loadSeconds = secondsOf(timer);

    timer.restart();
    auto text = engine.transcribe(std::move(sound.samples), words.options).takeResult();
    if (!text)
        return failure(text.error());
    recognised.transcribeSeconds = secondsOf(timer);
    recognised.raw = *std::move(text);
    recognised.language = engine.lastLanguage();
    // The line's end stands where the cursor's trailing space would.
    recognised.text = cleanTranscript(
        recognised.raw, {.autoCapitalize = context.settings.autoCapitalize(), .appendTrailingSpace = false});
    return recognised;
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
    const auto recognised = recognise(*std::move(sound), *words, context);
    if (!recognised)
        return fail(console, recognised.error().description());
    printRecognised(*recognised, *words, console);
    return ExitStatus::done;
}

} // namespace tulvane::cli
