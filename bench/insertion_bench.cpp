// How soon a text stands in the field of the program in front, and whether it stands there exactly: by our
// own insertion, typed by xdotool, and pasted with xclip and xdotool. All into the same GTK text view.
#include "InsertionDesk.h"
#include "JsonProcess.h"

#include <support/Await.h>
#include <support/ScratchFolder.h>

#include <QCoreApplication>
#include <QElapsedTimer>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <functional>
#include <vector>

namespace {

using namespace tulvane;

void fail(const char* what)
{
    std::fprintf(stderr, "bench_insertion: %s\n", what);
    std::exit(1);
}

/// A text of letters that the Norwegian layout has, so that it can be typed as well. No space at its end.
QString dictated(int characters)
{
    const auto sentence = QStringLiteral("Blåbærsyltetøy smaker godt på brød, og Ærlig talt på vafler. ");
    QString text = sentence.repeated(characters / static_cast<int>(sentence.size()) + 1).left(characters);
    if (text.endsWith(QLatin1Char(' ')))
        text.back() = QLatin1Char('.');
    return text;
}

/// A desktop with a text view in front.
class Desk {
public:
    Desk() { m_desk.desktop.setKeyboardLayout(QStringLiteral("no")); }

    /// Milliseconds from the start of `bring` until the whole text stands in the field; counts as inexact
    /// what is not the text then or has more come after it. `bring` returns when it is done with everything.
    double timeUntilThere(const QString& text, const std::function<void(const QString&)>& bring)
    {
        m_desk.target->clear();
        m_desk.target->requests()->forgetTold();
        double elapsed = -1;
        QElapsedTimer clock;
        const auto look = [&] {
            const auto told = m_desk.target->requests()->told();
            if (elapsed < 0 && !told.isEmpty() &&
                told.constLast()[QStringLiteral("characters")].toInt() == text.size())
                elapsed = static_cast<double>(clock.nsecsElapsed()) / 1e6;
        };
        m_onProgress = look;
        clock.start();
        bring(text);
        if (!test::waitUntil([&] {
                look();
                return elapsed >= 0;
            }))
            fail("the text did not come");
        inexact += m_desk.target->text() == text.toUtf8() ? 0 : 1;
        return elapsed;
    }

    void insert(const QString& text)
    {
        const auto task = m_desk.inserter.insert(text, InsertionMethod::paste, true);
        waitFor([&] { return task.isReady(); });
    }
    void runShell(const QString& command)
    {
        QProcess& process = m_desk.desktop.start(QStringLiteral("sh"), {QStringLiteral("-c"), command});
        waitFor([&] { return process.state() == QProcess::NotRunning; });
    }
    /// A file with the text, for the other programs.
    QString file(const QString& text) { return m_scratch.write(QStringLiteral("text"), text.toUtf8()); }

    int inexact = 0;

private:
    template <class Predicate>
    void waitFor(Predicate done)
    {
        if (!test::waitUntil(
                [&] {
                    m_onProgress();
                    return done();
                },
                std::chrono::minutes(2)))
            fail("a program did not come to its end");
    }

    bench::InsertionDesk m_desk;
    test::ScratchFolder m_scratch;
    std::function<void()> m_onProgress;
};

struct Way {
    const char* name;
    std::function<void(const QString&)> bring;
    std::vector<double> times = {};
    int inexact = 0;
};

std::vector<Way> ways(Desk& desk)
{
    const auto typed = [&desk](const char* options) {
        return [&desk, options](const QString& text) {
            desk.runShell(QStringLiteral("exec xdotool type %1 --file '%2'")
                              .arg(QLatin1String(options), desk.file(text)));
        };
    };
    return {{"Tulvane's insertion", [&desk](const QString& text) { desk.insert(text); }},
            {"xclip, then `xdotool key ctrl+v`",
             [&desk](const QString& text) {
                 desk.runShell(QStringLiteral("xclip -selection clipboard '%1' && xdotool key ctrl+v")
                                   .arg(desk.file(text)));
             }},
            {"`xdotool type`", typed("")},
            {"`xdotool type --delay 0`", typed("--delay 0")}};
}

void compare(Desk& desk, std::vector<Way> all, const QString& text, int rounds)
{
    for (int round = 0; round < rounds; ++round) {
        for (Way& way : all) {
            desk.inexact = 0;
            way.times.push_back(desk.timeUntilThere(text, way.bring));
            way.inexact += desk.inexact;
        }
    }
    for (Way& way : all) {
        std::sort(way.times.begin(), way.times.end());
        std::printf("| %d characters, %s | %.1f ms | %d of %d |\n", static_cast<int>(text.size()), way.name,
                    way.times.at(way.times.size() / 2), rounds - way.inexact, rounds);
        std::fflush(stdout);
    }
}

} // namespace

int main(int argc, char** argv)
{
    const QCoreApplication app(argc, argv);
    const int rounds = argc > 1 ? std::atoi(argv[1]) : 5;
    Desk desk;
    std::printf("| what | until the text stands there, median | exact |\n|---|---|---|\n");
    compare(desk, ways(desk), dictated(20), rounds);
    compare(desk, ways(desk), dictated(200), rounds);
    // Typing so much takes half a minute each time.
    compare(desk, ways(desk), dictated(2000), std::max(1, rounds * 3 / 5));
    // A space at the end is typed after the paste.
    Way spaced = ways(desk).front();
    spaced.name = "the last a space, Tulvane's insertion";
    compare(desk, {spaced}, dictated(199) + QLatin1Char(' '), rounds);
    return 0;
}
