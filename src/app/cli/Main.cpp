#include <app/cli/CommandLine.h>
#include <app/cli/CommandLog.h>
#include <app/cli/ProgramCommands.h>
#include <ports/ProcessHeap.h>
#include <settings/InterfaceLanguage.h>

#include <QCoreApplication>
#include <QFile>

#include <unistd.h>

#include <cstdio>
#include <cstdlib>

int main(int argc, char** argv)
{
    tulvane::useOneHeap();
    QCoreApplication::setApplicationName(QStringLiteral("Tulvane"));
    QCoreApplication::setApplicationVersion(QStringLiteral(TULVANE_VERSION));
    const QCoreApplication app(argc, argv);
    const QStringList arguments = QCoreApplication::arguments().mid(1);

    using namespace tulvane;
    const ScopedEnglish english;
    cli::writeLogToStandardError(arguments.contains(QStringLiteral("--verbose"))
                                     ? cli::LogAmount::everything
                                     : cli::LogAmount::errorsOnly);
    QFile in;
    // Without a standard input only the commands that read it have something to say about that.
    static_cast<void>(in.open(stdin, QIODevice::ReadOnly));
    QTextStream out(stdout);
    QTextStream err(stderr);
    cli::Console console{.in = in, .out = out, .err = err, .outIsTerminal = isatty(STDOUT_FILENO) != 0};
    const int status = cli::runCommandLine(arguments, programCommands(), startProgram, console);
    out.flush();
    err.flush();
    // Nothing is left to do but to give memory back, and the engine may be reading a model that is not needed
    // any more.
    std::quick_exit(status);
}
