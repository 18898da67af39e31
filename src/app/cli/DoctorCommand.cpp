#include <app/HotkeyFindings.h>
#include <app/cli/CommandSyntax.h>
#include <app/cli/DoctorCommand.h>
#include <app/cli/WaitFor.h>

#include <QJsonArray>
#include <QJsonDocument>

namespace tulvane::cli {

namespace {

struct Program {
    Finding finding;
    Findings hotkeys;
};

Program askProgram(RemoteControl& remote)
{
    const QString subject = QStringLiteral("program");
    const auto answer = waitFor(remote.ask(RemoteRequest::doctor));
    if (answer) {
        Findings hotkeys;
        for (const auto& line : (*answer)[QStringLiteral("findings")].toArray())
            hotkeys.append(Finding::fromJson(line.toObject()));
        return {Finding::good(subject, QStringLiteral("is running")), hotkeys};
    }
    if (answer.error() == RemoteError::noConnection)
        return {Finding::bad(subject, QStringLiteral("There is no session bus, so it cannot be asked."),
                             QStringLiteral("Start your session with D-Bus (dbus-run-session).")),
                hotkeyFindingsWithoutProgram()};
    if (answer.error() == RemoteError::noAnswer)
        return {Finding::bad(subject, QStringLiteral("It runs, but does not answer."),
                             QStringLiteral("End it and start it again.")),
                hotkeyFindingsWithoutProgram()};
    return {Finding::bad(subject, QStringLiteral("is not running."),
                         QStringLiteral("Start it: tulvane --background")),
            hotkeyFindingsWithoutProgram()};
}

void print(const Findings& findings, Console& console)
{
    qsizetype widest = 0;
    for (const Finding& finding : findings)
        widest = std::max(widest, finding.subject.size());
    for (const Finding& finding : findings) {
        console.out << (finding.works ? "  ok  " : "  no  ") << finding.subject.leftJustified(widest + 2)
                    << finding.text << '\n';
        if (!finding.remedy.isEmpty())
            console.out << QString(widest + 8, u' ') << finding.remedy << '\n';
    }
    console.out.flush();
}

} // namespace

int runDoctor(const QStringList& arguments, const DoctorContext& context, Console& console)
{
    CommandSyntax syntax(QStringLiteral("doctor"),
                         QStringLiteral("Says what works here and what does not, and what to do about it."));
    syntax.addFlag(QStringLiteral("json"), QStringLiteral("Print an array of objects."));
    if (const auto status = syntax.parse(arguments, console))
        return *status;

    Findings findings = context.examine();
    const Program program = askProgram(context.remote);
    qsizetype place = context.hotkeysAfter;
    for (const Finding& finding : program.hotkeys)
        findings.insert(place++, finding);
    findings.prepend(program.finding);
    if (syntax.isSet(QStringLiteral("json"))) {
        QJsonArray lines;
        for (const Finding& finding : findings)
            lines.append(finding.toJson());
        console.out << QJsonDocument(lines).toJson(QJsonDocument::Compact) << Qt::endl;
    } else {
        print(findings, console);
    }
    const bool allWorks = std::ranges::all_of(findings, &Finding::works);
    return allWorks ? ExitStatus::done : ExitStatus::failed;
}

} // namespace tulvane::cli
