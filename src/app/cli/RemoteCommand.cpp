#include <app/cli/CommandSyntax.h>
#include <app/cli/RemoteCommand.h>
#include <base/async/WaitFor.h>

#include <QDeadlineTimer>
#include <QJsonDocument>
#include <QThread>

#include <chrono>

namespace tulvane::cli {

namespace {

constexpr std::chrono::milliseconds endLimit{5000};
constexpr std::chrono::milliseconds endPause{20};

struct Verb {
    QLatin1StringView name;
    RemoteRequest request = RemoteRequest::status;
    QLatin1StringView summary;
};

constexpr Verb verbs[] = {
    {QLatin1StringView("start"), RemoteRequest::start, QLatin1StringView("Begins a dictation.")},
    {QLatin1StringView("stop"), RemoteRequest::stop,
     QLatin1StringView("Ends the dictation and inserts what was said.")},
    {QLatin1StringView("toggle"), RemoteRequest::toggle,
     QLatin1StringView("Begins a dictation, or ends the one under way.")},
    {QLatin1StringView("cancel"), RemoteRequest::cancel, QLatin1StringView("Abandons the dictation.")},
    {QLatin1StringView("quit"), RemoteRequest::quit,
     QLatin1StringView("Ends the running program, and returns once it is gone.")},
    {QLatin1StringView("status"), RemoteRequest::status,
     QLatin1StringView("Says what the running program is doing.")},
};

const Verb& verbOf(const QString& name)
{
    return *std::ranges::find_if(verbs, [&](const Verb& verb) { return name == verb.name; });
}

void print(const QJsonObject& status, Console& console)
{
    const QString message = status[QStringLiteral("message")].toString();
    console.out << status[QStringLiteral("phase")].toString();
    if (!message.isEmpty())
        console.out << ": " << message;
    if (status[QStringLiteral("modelLoading")].toBool())
        console.out << "; loading the model";
    if (status[QStringLiteral("locked")].toBool())
        console.out << "; the screen is locked";
    console.out << "; hotkey: " << status[QStringLiteral("hotkey")].toString() << "; "
                << status[QStringLiteral("historyCount")].toInt() << " in the history" << Qt::endl;
}

/// Why the request had no effect; empty where it had.
QString refusal(RemoteRequest request, const QJsonObject& before, const QJsonObject& after)
{
    const QString was = before[QStringLiteral("phase")].toString();
    const QString is = after[QStringLiteral("phase")].toString();
    const bool wasRecording = was == u"recording";
    const bool begins = request == RemoteRequest::start || request == RemoteRequest::toggle;
    if (begins && !wasRecording && after[QStringLiteral("locked")].toBool())
        return QStringLiteral("The screen is locked: nothing is recorded until it is unlocked.");
    if (is == u"error" && begins)
        return after[QStringLiteral("message")].toString();
    if (!wasRecording && (request == RemoteRequest::stop || request == RemoteRequest::cancel))
        return QStringLiteral("Nothing is being recorded.");
    if (is != u"recording" && !wasRecording)
        return QStringLiteral("The dictation before is still being finished.");
    return {};
}

/// Whether the program that was asked to end has done so within the limit.
bool isGone(RemoteControl& remote)
{
    const QDeadlineTimer limit(endLimit);
    const auto answers = [&remote] {
        const auto answer = waitFor(remote.ask(RemoteRequest::status));
        return answer || answer.error() == RemoteError::noAnswer;
    };
    bool isThere = answers();
    while (isThere && !limit.hasExpired()) {
        QThread::msleep(endPause.count());
        isThere = answers();
    }
    return !isThere;
}

int failWith(RemoteError error, Console& console)
{
    switch (error) {
    case RemoteError::notRunning:
        console.err << "tulvane: Tulvane is not running. (tulvane --background starts it)" << Qt::endl;
        return ExitStatus::notRunning;
    case RemoteError::noConnection:
        console.err << "tulvane: There is no session bus to reach the running program by." << Qt::endl;
        return ExitStatus::notRunning;
    case RemoteError::noAnswer:
        break;
    }
    return fail(console, QStringLiteral("The running program does not answer."));
}

} // namespace

int runRemote(const QString& name, const QStringList& arguments, RemoteControl& remote, Console& console)
{
    const Verb& verb = verbOf(name);
    CommandSyntax syntax(verb.name, verb.summary);
    syntax.addFlag(QStringLiteral("json"), QStringLiteral("Print the program's state as one JSON object."));
    if (const auto status = syntax.parse(arguments, console))
        return *status;

    const auto before = waitFor(remote.ask(RemoteRequest::status));
    if (!before)
        return failWith(before.error(), console);
    const auto after = verb.request == RemoteRequest::status ? before : waitFor(remote.ask(verb.request));
    if (!after)
        return failWith(after.error(), console);
    if (syntax.isSet(QStringLiteral("json")))
        console.out << QJsonDocument(*after).toJson(QJsonDocument::Compact) << Qt::endl;
    else if (verb.request == RemoteRequest::status)
        print(*after, console);
    if (verb.request == RemoteRequest::status)
        return ExitStatus::done;
    if (verb.request == RemoteRequest::quit)
        return isGone(remote) ? static_cast<int>(ExitStatus::done)
                              : fail(console, QStringLiteral("The running program does not end."));
    const QString reason = refusal(verb.request, *before, *after);
    return reason.isEmpty() ? static_cast<int>(ExitStatus::done) : fail(console, reason);
}

} // namespace tulvane::cli
