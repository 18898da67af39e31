// One model download through the detached helper beside curl, and one check beside openssl, in turn: each
// needs a file as large as the smallest model of the catalogue, which takes its room on the disk twice.
#include <models/ModelVerification.h>
#include <platform/linux/transfers/DetachedTransfers.h>
#include <support/Await.h>
#include <support/HubServer.h>
#include <support/ScratchFolder.h>

#include <QCoreApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QProcess>

#include <algorithm>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <vector>

namespace {

using namespace tulvane;

constexpr qint64 size = 539'000'000;

void fail(const QString& what)
{
    std::fprintf(stderr, "bench_download: %s\n", qPrintable(what));
    std::exit(1);
}

double secondsOf(const QElapsedTimer& timer)
{
    return static_cast<double>(timer.nsecsElapsed()) / 1e9;
}

/// Peak memory of the helper, in MB, read from its own account in /proc.
double helperPeak(const QString& folder)
{
    const QStringList processes = QDir(QStringLiteral("/proc")).entryList(QDir::Dirs | QDir::NoDotAndDotDot);
    for (const QString& process : processes) {
        QFile command(QStringLiteral("/proc/%1/cmdline").arg(process));
        if (!command.open(QIODevice::ReadOnly) || !command.readAll().contains(folder.toUtf8()))
            continue;
        QFile status(QStringLiteral("/proc/%1/status").arg(process));
        if (process == QString::number(QCoreApplication::applicationPid()) ||
            !status.open(QIODevice::ReadOnly))
            continue;
        for (const QByteArray& line : status.readAll().split('\n')) {
            if (line.startsWith("VmHWM:"))
                return line.mid(6).trimmed().split(' ').constFirst().toDouble() / 1e3;
        }
    }
    return 0;
}

struct Download {
    double seconds = 0;
    double megabytes = 0;
};

Download withHelper(const QUrl& url, const QString& kept)
{
    const test::ScratchFolder folder;
    DetachedTransfers transfers({.helper = QStringLiteral(TULVANE_TRANSFER_HELPER),
                                 .folder = folder.path(),
                                 .helperArguments = {QStringLiteral("--linger"), QStringLiteral("200")}});
    bool arrived = false;
    bool over = false;
    double peak = 0;
    transfers.setEvents({.progress = {},
                         .finished =
                             [&](TransferId, int status, const QString& file) {
                                 peak = helperPeak(folder.path());
                                 arrived = status == 200 && QFile::rename(file, kept);
                             },
                         .completed = [&](TransferId, const auto&) { over = true; },
                         .eventsDelivered = {}});
    QElapsedTimer timer;
    timer.start();
    static_cast<void>(transfers.start({.url = url, .userAgent = "Tulvane", .sizeHint = size}));
    if (!test::waitUntil([&] { return over; }, std::chrono::minutes(5)) || !arrived)
        fail(QStringLiteral("the download failed"));
    return {secondsOf(timer), peak};
}

double process(const QString& program, const QStringList& arguments)
{
    QProcess run;
    QElapsedTimer timer;
    timer.start();
    run.start(program, arguments);
    if (!run.waitForFinished(300'000) || run.exitCode() != 0)
        fail(program + QStringLiteral(" failed: ") + QString::fromLocal8Bit(run.readAllStandardError()));
    return secondsOf(timer);
}

double checked(const QString& file, const QByteArray& digest)
{
    WhisperModel model = WhisperModel::fallback();
    model.approximateSizeBytes = size;
    model.sha256 = QString::fromLatin1(digest);
    QElapsedTimer timer;
    timer.start();
    if (const auto sound = verifyModelFile(file, model); !sound)
        fail(sound.error().description());
    return secondsOf(timer);
}

double median(std::vector<double> values)
{
    std::sort(values.begin(), values.end());
    return values.at(values.size() / 2);
}

} // namespace

int main(int argc, char** argv)
{
    const QCoreApplication app(argc, argv);
    const int rounds = argc > 1 ? std::atoi(argv[1]) : 5;
    const test::ScratchFolder folder;
    const test::HubServer server;
    const QUrl url = server.putSparse(QStringLiteral("model.bin"), size, QByteArray("lmgg", 4));
    const QString ours = folder.file(QStringLiteral("ours.bin"));
    const QString theirs = folder.file(QStringLiteral("theirs.bin"));
    const QString digestFile = folder.file(QStringLiteral("digest"));
    std::vector<double> throughput;
    std::vector<double> verification;
    double peak = 0;
    double seconds = 0;
    for (int i = 0; i < rounds; ++i) {
        const Download download = withHelper(url, ours);
        const double curl = process(QStringLiteral("curl"),
                                    {QStringLiteral("-sf"), QStringLiteral("-o"), theirs, url.toString()});
        throughput.push_back(curl / download.seconds);
        peak = std::max(peak, download.megabytes);
        seconds = download.seconds;
        const double openssl = process(QStringLiteral("openssl"),
                                       {QStringLiteral("dgst"), QStringLiteral("-sha256"),
                                        QStringLiteral("-r"), QStringLiteral("-out"), digestFile, ours});
        QFile digest(digestFile);
        if (!digest.open(QIODevice::ReadOnly))
            fail(QStringLiteral("openssl wrote nothing"));
        verification.push_back(openssl / checked(ours, digest.readAll().left(64)));
        QFile::remove(ours);
        QFile::remove(theirs);
    }
    std::printf("| what | figure |\n|---|---|\n");
    std::printf("| download of %lld bytes, throughput beside curl | %.2f (%.0f MB/s in the last round) |\n",
                static_cast<long long>(size), median(throughput), static_cast<double>(size) / 1e6 / seconds);
    std::printf("| peak memory of the helper while doing it | %.1f MB |\n", peak);
    std::printf("| check of the file, throughput beside openssl dgst | %.2f |\n", median(verification));
    return 0;
}
