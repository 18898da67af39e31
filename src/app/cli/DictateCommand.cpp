#include <app/cli/DictateCommand.h>
#include <app/cli/InterruptWatcher.h>
#include <app/cli/RecognitionArguments.h>
#include <app/cli/RecognitionOutput.h>
#include <app/cli/TimedRecognizer.h>
#include <audio/AudioRecorder.h>
#include <base/Clock.h>
#include <base/Scheduler.h>
#include <dictation/DictationSession.h>
#include <dictation/ModelSource.h>
#include <settings/AppSettings.h>
#include <speech/device/ComputingStatus.h>

#include <QCoroTask>
#include <QEventLoop>
#include <QTimer>

namespace tulvane::cli {

namespace {

using Longest = std::optional<std::chrono::seconds>;

/// Why a recording ended.
enum class Ending { asked, interrupted };

Result<Longest, int> readLongest(const CommandSyntax& syntax, Console& console)
{
    if (!syntax.isSet(QStringLiteral("seconds")))
        return Longest();
    bool isNumber = false;
    const int seconds = syntax.value(QStringLiteral("seconds")).toInt(&isNumber);
    if (!isNumber || seconds < 1)
        return failure(syntax.usageError(console, QStringLiteral("--seconds takes a whole number above 0.")));
    return Longest(seconds);
}

Ending recordUntilStopped(DictationSession& session, int keyboard, const Longest& longest)
{
    QEventLoop loop;
    Ending ending = Ending::asked;
    session.onMaxDurationReached = [&] { loop.quit(); };
    session.onInputStalled = [&] { loop.quit(); };
    session.onRecordingInterrupted = [&] {
        ending = Ending::interrupted;
        loop.quit();
    };
    const InterruptWatcher watch(keyboard, [&] { loop.quit(); });
    if (longest)
        QTimer::singleShot(*longest, &loop, &QEventLoop::quit);
    loop.exec();
    return ending;
}

QString verdict(const Outcome& outcome)
{
    switch (outcome.kind) {
    case Outcome::Kind::tooShort:
        return QStringLiteral("Too short");
    case Outcome::Kind::nothingHeard:
        return QStringLiteral("Nothing heard");
    case Outcome::Kind::transcript:
    case Outcome::Kind::nothingRecognised:
        break;
    }
    return {};
}

/// The objects of one dictation, wired as the command's words ask.
struct Pipeline {
    Pipeline(const RecognitionArguments& words, const DictationContext& context)
        : recognizer(context.recognition.recognizer()),
          recorder(context.input, clock),
          models(words.modelFile),
          session({.settings = context.settings,
                   .recorder = recorder,
                   .models = models,
                   .engine = recognizer,
                   .stats = context.stats,
                   .scheduler = scheduler,
                   .clock = clock,
                   .isMicrophoneAuthorized = [] { return true; },
                   .threadCount = words.options.threadCount,
                   .fixedOptions = words.options})
    {
    }

    SystemClock clock;
    EventLoopScheduler scheduler;
    TimedRecognizer recognizer;
    AudioRecorder recorder;
    FixedModelSource models;
    DictationSession session;
};

int dictateWith(const RecognitionArguments& words, const Longest& longest, const DictationContext& context,
                Console& console)
{
    Pipeline pipeline(words, context);
    if (const auto started = pipeline.session.start(); !started)
        return fail(console, started.error().description());
    console.err << "Listening; Enter or Ctrl+C ends it." << Qt::endl;
    if (recordUntilStopped(pipeline.session, context.keyboard, longest) == Ending::interrupted)
        return fail(console, QStringLiteral("Microphone changed – recording cancelled"));

    const auto outcome = QCoro::waitFor(pipeline.session.finish(pipeline.session.stop()));
    if (!outcome)
        return fail(console, outcome.error().description());
    if (const QString reason = verdict(*outcome); !reason.isEmpty()) {
        console.err << reason << Qt::endl;
        return ExitStatus::done;
    }
    const TimedRecognizer& timed = pipeline.recognizer;
    warnOfProcessor(context.recognition, console);
    printRecognised({.text = outcome->text.trimmed(),
                     .raw = timed.last().text,
                     .language = timed.last().language,
                     .audioSeconds = outcome->durationSeconds,
                     .loadSeconds = timed.loadSeconds(),
                     .transcribeSeconds = timed.transcribeSeconds(),
                     .device = context.recognition.computing.place().device},
                    words, console);
    return ExitStatus::done;
}

} // namespace

int runDictate(const QStringList& arguments, const DictationContext& context, Console& console)
{
    CommandSyntax syntax(QStringLiteral("dictate"), QStringLiteral("Turns what you say into clean text."));
    syntax.addOption(QStringLiteral("seconds"), QStringLiteral("N"), QStringLiteral("Stop after so long."));
    addRecognitionArguments(syntax);
    if (const auto status = syntax.parse(arguments, console))
        return *status;
    const auto longest = readLongest(syntax, console);
    if (!longest)
        return longest.error();
    const auto words = readRecognitionArguments(syntax, context.recognition, console);
    if (!words)
        return words.error();
    return dictateWith(*words, *longest, context, console);
}

} // namespace tulvane::cli
