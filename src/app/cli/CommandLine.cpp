#include <app/cli/CommandLine.h>

#include <QCoreApplication>

#include <algorithm>

namespace tulvane::cli {

namespace {

QString overview(const std::vector<Command>& commands)
{
    QString text =
        QStringLiteral("Usage: tulvane [--background] [--page PAGE]\n"
                       "       tulvane COMMAND [options]\n"
                       "Private, on-device dictation in Norwegian and English. Without a command the "
                       "program starts,\nor shows itself where it runs already; --background starts it "
                       "without a window.\n\n"
                       "Commands:\n");
    qsizetype widest = 0;
    for (const Command& command : commands)
        widest = std::max(widest, command.name.size());
    for (const Command& command : commands)
        text += u"  " + command.name.leftJustified(widest + 2) + command.summary + u'\n';
    text += QStringLiteral(
        "\ntulvane COMMAND --help tells what each takes; --version tells which version this is.\n"
        "Exit status: 0 done, 1 failed, 2 wrong words, 3 no running program.\n"
        "The bundled model “demo” knows simple sentences spoken by a synthetic voice, and nothing more.\n");
    return text;
}

} // namespace

int runCommandLine(const QStringList& arguments, const std::vector<Command>& commands, const Run& start,
                   Console& console)
{
    const QString first = arguments.value(0);
    if (first == u"--help" || first == u"-h") {
        console.out << overview(commands);
        return ExitStatus::done;
    }
    if (first == u"--version") {
        console.out << "tulvane " << QCoreApplication::applicationVersion() << '\n';
        return ExitStatus::done;
    }
    if (first.isEmpty() || first.startsWith(u'-'))
        return start(arguments, console);
    const auto command = std::ranges::find(commands, first, &Command::name);
    if (command != commands.end())
        return command->run(arguments.mid(1), console);
    console.err << "tulvane: there is no command “" << first << "”. (tulvane --help)" << Qt::endl;
    return ExitStatus::wrongUsage;
}

} // namespace tulvane::cli
