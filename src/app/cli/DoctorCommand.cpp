#include <app/cli/CommandSyntax.h>
#include <app/cli/DoctorCommand.h>
#include <app/program/HotkeyDiagnostics.h>
#include <base/async/WaitFor.h>

#include <QJsonArray>
#include <QJsonDocument>

namespace tulvane::cli {

namespace {

struct Program {
    Diagnostic diagnostic;
    Diagnostics hotkeys;
};

Program askProgram(RemoteControl& remote)
{
    const QString subject = QStringLiteral("program");
    const auto answer = waitFor(remote.ask(RemoteRequest::doctor));
    if (answer) {
        Diagnostics hotkeys;
        for (const auto& line : (*answer)[QStringLiteral("diagnostics")].toArray())
            hotkeys.append(Diagnostic::fromJson(line.toObject()));
        return {Diagnostic::good(subject, QStringLiteral("is running")), hotkeys};
    }
    if (answer.error() == RemoteError::noConnection)
        return {Diagnostic::bad(subject, QStringLiteral("There is no session bus, so it cannot be asked."),
                                QStringLiteral("Start your session with D-Bus (dbus-run-session).")),
                hotkeyDiagnosticsWithoutProgram()};
    if (answer.error() == RemoteError::noAnswer)
        return {Diagnostic::bad(subject, QStringLiteral("It runs, but does not answer."),
                                QStringLiteral("End it and start it again.")),
                hotkeyDiagnosticsWithoutProgram()};
    return {Diagnostic::bad(subject, QStringLiteral("is not running."),
                            QStringLiteral("Start it: tulvane --background")),
            hotkeyDiagnosticsWithoutProgram()};
}

void print(const Diagnostics& diagnostics, Console& console)
{
    qsizetype widest = 0;
    for (const Diagnostic& diagnostic : diagnostics)
        widest = std::max(widest, diagnostic.subject.size());
    for (const Diagnostic& diagnostic : diagnostics) {
        console.out << (diagnostic.works ? "  ok  " : "  no  ")
                    << diagnostic.subject.leftJustified(widest + 2) << diagnostic.text << '\n';
        if (!diagnostic.remedy.isEmpty())
            console.out << QString(widest + 8, u' ') << diagnostic.remedy << '\n';
    }
    // The one thing to do next, for a reader of nothing else.
    const auto trouble = std::ranges::find_if(
        diagnostics, [](const Diagnostic& each) { return !each.works && !each.remedy.isEmpty(); });
    console.out << '\n'
                << (trouble == diagnostics.end() ? QStringLiteral("Ready to dictate.")
                                                 : QStringLiteral("Next: ") + trouble->remedy)
                << Qt::endl;
}

} // namespace

int runDoctor(const QStringList& arguments, const DoctorContext& context, Console& console)
{
    CommandSyntax syntax(QStringLiteral("doctor"),
                         QStringLiteral("Says what works here and what does not, and what to do about it."));
    syntax.addFlag(QStringLiteral("json"), QStringLiteral("Print an array of objects."));
    if (const auto status = syntax.parse(arguments, console))
        return *status;

    const Examination found = context.examine();
    const Program program = askProgram(context.remote);
    const Diagnostics diagnostics =
        Diagnostics{program.diagnostic} + found.session + program.hotkeys + found.dictation;
    if (syntax.isSet(QStringLiteral("json"))) {
        QJsonArray lines;
        for (const Diagnostic& diagnostic : diagnostics)
            lines.append(diagnostic.toJson());
        console.out << QJsonDocument(lines).toJson(QJsonDocument::Compact) << Qt::endl;
    } else {
        print(diagnostics, console);
    }
    const bool allWorks = std::ranges::all_of(diagnostics, &Diagnostic::works);
    return allWorks ? ExitStatus::done : ExitStatus::failed;
}

} // namespace tulvane::cli
