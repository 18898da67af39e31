#include <app/DesktopProgram.h>
#include <app/ResidentProgram.h>
#include <app/cli/CommandLog.h>
#include <ports/CoreDump.h>
#include <ports/HomeFolder.h>
#include <ports/OpenDesktop.h>
#include <ports/ProcessHeap.h>

#include <QApplication>
#include <QFile>
#include <QQuickWindow>

#include <csignal>
#include <cstdio>
#include <cstdlib>

namespace {

/// Before the application object: it would end the process where the display does not answer, and it reads
/// these variables only once.
void prepareForWindows(const QByteArray& windowSystem)
{
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", windowSystem);
    // Pages of text need no graphics card: drawn by the processor they open sooner and take a third of the
    // memory.
    if (qEnvironmentVariableIsEmpty("QT_QUICK_BACKEND"))
        QQuickWindow::setGraphicsApi(QSGRendererInterface::Software);
    // The tray's menu is all that is drawn by widgets: no reason to load whatever style the desktop has
    // installed.
    QApplication::setStyle(QStringLiteral("Fusion"));
    QGuiApplication::setApplicationName(QStringLiteral("Tulvane"));
    QGuiApplication::setApplicationVersion(QStringLiteral(TULVANE_VERSION));
    QGuiApplication::setDesktopFileName(QStringLiteral("com.dunio.Tulvane"));
    QGuiApplication::setQuitOnLastWindowClosed(false);
}

int run(int argc, char** argv, tulvane::cli::Console& console)
{
    using namespace tulvane;
    QStringList arguments;
    for (int i = 1; i < argc; ++i)
        arguments.append(QString::fromLocal8Bit(argv[i]));
    const auto words = cli::LaunchOptions::parse(arguments, console);
    if (!words)
        return words.error();
    const auto windows = windowSystem(QProcessEnvironment::systemEnvironment());
    if (!windows)
        return cli::fail(console, windows.error().text());
    prepareForWindows(*windows);
    const QApplication app(argc, argv);
    return runResidentProgram(*words, console);
}

} // namespace

namespace tulvane {

void runDesktopProgram(int argc, char** argv)
{
    // The reader of our log may be gone: no reason to end as well.
    std::signal(SIGPIPE, SIG_IGN);
    leaveNoCoreDump();
    knowHomeFolder();
    useOneHeap();
    cli::writeLogToStandardError(cli::LogAmount::everything);
    QFile in;
    QTextStream out(stdout);
    QTextStream err(stderr);
    cli::Console console{.in = in, .out = out, .err = err, .outIsTerminal = false};
    const int status = run(argc, argv, console);
    out.flush();
    err.flush();
    // Nothing is left to do but to give memory back, and the engine may be reading a model that is not needed
    // any more.
    std::quick_exit(status);
}

} // namespace tulvane
