// Whether a picture that the user has copied is back after a dictation, byte for byte, and what it costs:
// held by a program of each toolkit, which encodes it anew in each format that is asked for.
//   bench_pictures [ROUNDS] [TOOLKIT]
#include "AwaitProgram.h"
#include "InsertionDesk.h"

#include <platform/linux/x11/clipboard/ClipboardFormats.h>
#include <support/Await.h>

#include <QCoreApplication>
#include <QElapsedTimer>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <stdexcept>
#include <vector>

namespace {

using namespace tulvane;
using namespace std::chrono_literals;

const auto dictated = QStringLiteral("Takk – det går «fint» 😀 ");

[[noreturn]] void fail(const QString& what)
{
    throw std::runtime_error(what.toStdString());
}

/// A desktop with a text view in front and a picture on the clipboard.
class Desk {
public:
    Desk(const QString& toolkit, int width, int height)
        : m_holder(m_desk.desktop.start(QStringLiteral("/usr/bin/python3"),
                                        {QStringLiteral(TULVANE_PICTURE_HOLDER), toolkit,
                                         QString::number(width), QString::number(height)}))
    {
        awaitHolder("ready");
    }

    [[nodiscard]] QList<QByteArray> formats()
    {
        QList<QByteArray> formats = read(QStringLiteral("TARGETS")).split('\n');
        formats.removeIf([](const QByteArray& one) { return !isContentTarget(QString::fromUtf8(one)); });
        return formats;
    }
    [[nodiscard]] QByteArray read(const QString& target)
    {
        QProcess& program = m_desk.desktop.start(QStringLiteral("xclip"),
                                                 {QStringLiteral("-o"), QStringLiteral("-selection"),
                                                  QStringLiteral("clipboard"), QStringLiteral("-t"), target});
        QByteArray bytes;
        if (!test::waitUntil(
                [&] {
                    bytes += program.readAllStandardOutput();
                    return program.state() == QProcess::NotRunning;
                },
                60s))
            fail(target + QStringLiteral(" was not read"));
        return bytes + program.readAllStandardOutput();
    }
    void copyAgain()
    {
        m_holder.write("\n");
        awaitHolder("kept");
    }
    /// Milliseconds; with what the speech engine would take before it.
    [[nodiscard]] qint64 dictate(std::chrono::milliseconds engine)
    {
        m_desk.target->clear();
        m_desk.inserter.prepare(InsertionMethod::paste, true);
        test::runEventLoopFor(engine);
        QElapsedTimer clock;
        clock.start();
        const auto task = m_desk.inserter.insert(dictated, InsertionMethod::paste, true);
        if (!test::waitUntil([&] { return task.isReady(); }, 60s))
            fail(QStringLiteral("the insertion did not end"));
        const qint64 elapsed = clock.elapsed();
        if (!test::waitUntil([&] { return m_desk.target->text() == dictated.toUtf8(); }))
            fail(QStringLiteral("the text did not arrive"));
        return elapsed;
    }

private:
    void awaitHolder(const char* word)
    {
        test::awaitProgram(
            m_holder, "no picture",
            [&] { return m_holder.canReadLine() && m_holder.readLine().trimmed() == word; }, 60s);
    }

    bench::InsertionDesk m_desk;
    QProcess& m_holder;
};

void measure(const QString& toolkit, int width, int height, int rounds, std::chrono::milliseconds engine)
{
    Desk desk(toolkit, width, height);
    const auto png = QStringLiteral("image/png");
    const QByteArray picture = desk.read(png);
    if (picture.isEmpty())
        fail(QStringLiteral("%1 offers no picture").arg(toolkit));
    const qsizetype offered = desk.formats().size();
    int same = 0;
    qsizetype fewest = offered;
    std::vector<qint64> times;
    for (int round = 0; round < rounds; ++round) {
        desk.copyAgain();
        times.push_back(desk.dictate(engine));
        same += desk.read(png) == picture ? 1 : 0;
        fewest = std::min(fewest, desk.formats().size());
    }
    std::ranges::sort(times);
    std::printf("| %s, %dx%d, %.1f MB as PNG | %.1f s | %d of %d | %d of %d | %.1f s, at most %.1f s |\n",
                qPrintable(toolkit), width, height, static_cast<double>(picture.size()) / 1e6,
                static_cast<double>(engine.count()) / 1e3, same, rounds, static_cast<int>(fewest),
                static_cast<int>(offered), static_cast<double>(times.at(times.size() / 2)) / 1e3,
                static_cast<double>(times.back()) / 1e3);
    std::fflush(stdout);
}

/// A toolkit need not be installed.
void measureWhereThereIs(const QString& toolkit, int width, int height, int rounds,
                         std::chrono::milliseconds engine)
{
    try {
        measure(toolkit, width, height, rounds, engine);
    } catch (const std::runtime_error& problem) {
        std::fprintf(stderr, "bench_pictures: %s left out: %s\n", qPrintable(toolkit), problem.what());
    }
}

} // namespace

int main(int argc, char** argv)
{
    const QCoreApplication app(argc, argv);
    const int rounds = argc > 1 ? std::atoi(argv[1]) : 3;
    std::printf("| picture | the engine takes | put back exactly | formats | insertion, median |\n"
                "|---|---|---|---|---|\n");
    for (const char* toolkit : {"qt5", "qt6", "gtk3", "gtk4"}) {
        if (argc > 2 && qstrcmp(argv[2], toolkit) != 0)
            continue;
        for (const auto& [width, height] : {std::pair(1920, 1080), std::pair(3840, 2160)}) {
            for (const auto engine : {0ms, 2000ms})
                measureWhereThereIs(QString::fromLatin1(toolkit), width, height, rounds, engine);
        }
    }
    return 0;
}
