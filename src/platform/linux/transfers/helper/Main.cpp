#include <platform/linux/transfers/helper/TransferServer.h>

#include <QCommandLineParser>
#include <QCoreApplication>

#include <sys/stat.h>
#include <unistd.h>

#include <csignal>

namespace {

using tulvane::transfers::TransferServer;

int wakeUp = -1;

void requestQuit(int)
{
    // All that a signal handler may safely do; the event loop does the rest.
    const char byte = 0;
    [[maybe_unused]] const auto written = ::write(wakeUp, &byte, 1);
}

/// Ends the event loop on SIGTERM and SIGINT: downloads stop in good order, and the next helper goes on.
void quitOnSignals(QCoreApplication& app)
{
    int ends[2] = {-1, -1};
    if (::pipe(ends) != 0)
        return;
    wakeUp = ends[1];
    auto* const notifier = new QSocketNotifier(ends[0], QSocketNotifier::Read, &app);
    QObject::connect(notifier, &QSocketNotifier::activated, &app, &QCoreApplication::quit);
    std::signal(SIGTERM, requestQuit);
    std::signal(SIGINT, requestQuit);
    std::signal(SIGHUP, SIG_IGN);
    std::signal(SIGPIPE, SIG_IGN);
    std::signal(SIGXFSZ, SIG_IGN);
}

void addOption(QCommandLineParser& parser, const char* name, const char* otherwise)
{
    const QString text = QString::fromLatin1(name);
    parser.addOption({text, text, text, QString::fromLatin1(otherwise)});
}

TransferServer::Options optionsFrom(const QCommandLineParser& parser)
{
    const auto number = [&](const char* name) {
        return parser.value(QString::fromLatin1(name)).toLongLong();
    };
    TransferServer::Options options;
    options.folder = parser.value(QStringLiteral("folder"));
    options.socket = parser.value(QStringLiteral("socket"));
    options.linger = std::chrono::milliseconds(number("linger"));
    options.http.stallTimeout = std::chrono::milliseconds(number("stall"));
    options.http.retries = static_cast<int>(number("retries"));
    options.http.retryPause = std::chrono::milliseconds(number("pause"));
    options.http.reserve = number("reserve");
    return options;
}

} // namespace

/// The program that fetches model files in the background, for `DetachedTransfers`. Not for people: it says
/// nothing. Times are milliseconds, the reserve is bytes. Exit status 1: another helper has the folder.
int main(int argc, char** argv)
{
    constexpr mode_t otherUsers = 0077;
    ::umask(otherUsers);
    QCoreApplication app(argc, argv);
    QCommandLineParser parser;
    addOption(parser, "folder", "");
    addOption(parser, "socket", "");
    addOption(parser, "linger", "2000");
    addOption(parser, "stall", "60000");
    // About a minute without a network is waited out: a new wireless network, a lid that was closed.
    addOption(parser, "retries", "6");
    addOption(parser, "pause", "1000");
    addOption(parser, "reserve", "67108864");
    parser.process(app);

    quitOnSignals(app);
    TransferServer server(optionsFrom(parser));
    QObject::connect(&server, &TransferServer::idle, &app, &QCoreApplication::quit);
    return server.begin() ? QCoreApplication::exec() : 1;
}
