#include <app/cli/CommandLog.h>
#include <app/cli/CommandProcess.h>
#include <app/cli/CommandTable.h>
#include <ports/CoreDump.h>
#include <ports/HomeFolder.h>
#include <ports/ProcessHeap.h>
#include <settings/InterfaceLanguage.h>

#include <QCoreApplication>
#include <QFile>

#include <unistd.h>

#include <cstdio>
#include <cstdlib>

namespace tulvane::cli {

void runCommandProcess(int argc, char** argv, const std::function<std::map<QString, Run>()>& runs,
                       const Run& others, const Run& start)
{
    leaveNoCoreDump();
    knowHomeFolder();
    useOneHeap();
    QCoreApplication::setApplicationName(QStringLiteral("Tulvane"));
    QCoreApplication::setApplicationVersion(QStringLiteral(TULVANE_VERSION));
    const QCoreApplication app(argc, argv);
    const QStringList arguments = QCoreApplication::arguments().mid(1);

    const ScopedEnglish english;
    writeLogToStandardError(arguments.contains(QStringLiteral("--verbose")) ? LogAmount::everything
                                                                            : LogAmount::errorsOnly);
    QFile in;
    // Without a standard input only the commands that read it have something to say about that.
    static_cast<void>(in.open(stdin, QIODevice::ReadOnly));
    QTextStream out(stdout);
    QTextStream err(stderr);
    Console console{.in = in, .out = out, .err = err, .outIsTerminal = isatty(STDOUT_FILENO) != 0};
    const int status = runCommandLine(arguments, commandTable(runs(), others), start, console);
    out.flush();
    err.flush();
    // Nothing is left to do but to give memory back, and the engine may be reading a model that is not needed
    // any more.
    std::quick_exit(status);
}

} // namespace tulvane::cli
