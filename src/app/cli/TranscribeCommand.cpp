#include <app/cli/CommandSyntax.h>
#include <app/cli/RecognitionArguments.h>
#include <app/cli/RecognitionOutput.h>
#include <app/cli/TranscribeCommand.h>
#include <settings/AppSettings.h>
#include <speech/CleanTranscript.h>
#include <speech/Recognizer.h>
#include <speech/device/ComputingStatus.h>

#include <QElapsedTimer>

#include <utility>

namespace tulvane::cli {

namespace {

Result<Recognised, EngineError> recognise(Sound sound, const RecognitionArguments& words, Recognizer& engine,
                                          const AppSettings& settings)
{
    Recognised recognised;
    recognised.audioSeconds = sound.seconds;
    QElapsedTimer timer;
    timer.start();
    // Nothing else happens in this process, so blocking on the engine's worker is as good as an event loop.
    auto samples = std::make_shared<const std::vector<float>>(std::move(sound.samples));
    auto answer = engine.transcribe(std::move(samples), words.options).takeResult();
    if (!answer)
        return failure(answer.error());
    recognised.transcribeSeconds = secondsOf(timer);
    recognised.raw = std::move(answer->text);
    recognised.language = std::move(answer->language);
    // The line's end stands where the cursor's trailing space would.
    recognised.text = cleanTranscript(
        recognised.raw, {.autoCapitalize = settings.autoCapitalize(), .appendTrailingSpace = false});
    return recognised;
}

} // namespace

int runTranscribe(const QStringList& arguments, const RecognitionContext& context,
                  const SoundReader& readSound, Console& console)
{
    CommandSyntax syntax(QStringLiteral("transcribe"), QStringLiteral("Turns a sound file into clean text."));
    syntax.addArgument(QStringLiteral("FILE"), QStringLiteral("Any common sound file."));
    syntax.setOperandCount(1, 1);
    addRecognitionArguments(syntax);
    if (const auto status = syntax.parse(arguments, console))
        return *status;
    const auto words = readRecognitionArguments(syntax, context, console);
    if (!words)
        return words.error();

    // The recogniser reads its model while this thread reads the sound.
    Recognizer& engine = context.recognizer();
    QElapsedTimer timer;
    timer.start();
    auto loading =
        engine.load(words->modelFile).then(QtFuture::Launch::Sync, [timer](const Recognizer::Loaded& loaded) {
            return std::pair(loaded, secondsOf(timer));
        });
    auto sound = readSound(syntax.operands().constFirst());
    if (!sound)
        return fail(console, sound.error().description());
    const auto [loaded, loadSeconds] = loading.takeResult();
    if (!loaded)
        return fail(console, loaded.error().description());
    auto recognised = recognise(*std::move(sound), *words, engine, context.settings);
    if (!recognised)
        return fail(console, recognised.error().description());
    recognised->loadSeconds = loadSeconds;
    recognised->device = context.computing.place().device;
    warnOfProcessor(context, console);
    printRecognised(*recognised, *words, console);
    return ExitStatus::done;
}

} // namespace tulvane::cli
