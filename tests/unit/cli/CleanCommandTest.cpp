#include <app/cli/CleanCommand.h>

#include <QBuffer>
#include <QFile>

#include <gtest/gtest.h>

namespace tulvane::cli {
namespace {

struct Outcome {
    int status = -1;
    QByteArray out;
    QByteArray err;
};

Outcome run(const QStringList& arguments, QIODevice& in)
{
    Outcome outcome;
    QTextStream out(&outcome.out);
    QTextStream err(&outcome.err);
    Console console{.in = in, .out = out, .err = err};
    outcome.status = runClean(arguments, console);
    out.flush();
    err.flush();
    return outcome;
}

Outcome run(const QStringList& arguments, QByteArray input)
{
    QBuffer in(&input);
    in.open(QIODevice::ReadOnly);
    return run(arguments, in);
}

TEST(CleanCommand, printsTheCleanedTextAndNothingMore)
{
    const Outcome outcome = run({}, QByteArrayLiteral(" (Latter) på  tide. [Musikk]\n"));
    EXPECT_EQ(outcome.status, ExitStatus::done);
    EXPECT_EQ(outcome.out, QByteArrayLiteral("På tide. "));
    EXPECT_EQ(outcome.err, QByteArray());
}

TEST(CleanCommand, eachFlagSwitchesOneThingOff)
{
    EXPECT_EQ(run({QStringLiteral("--no-capitalize")}, QByteArrayLiteral("øl")).out,
              QByteArrayLiteral("øl "));
    EXPECT_EQ(run({QStringLiteral("--no-trailing-space")}, QByteArrayLiteral("øl")).out,
              QByteArrayLiteral("Øl"));
    EXPECT_EQ(run({QStringLiteral("--no-capitalize"), QStringLiteral("--no-trailing-space")},
                  QByteArrayLiteral("øl\n"))
                  .out,
              QByteArrayLiteral("øl"));
}

TEST(CleanCommand, printsNothingWhereNothingIsLeft)
{
    for (const char* input : {"", "\n", "[Musikk]", " ♪♪ (stillhet) "}) {
        const Outcome outcome = run({}, QByteArray(input));
        EXPECT_EQ(outcome.status, ExitStatus::done) << input;
        EXPECT_EQ(outcome.out, QByteArray()) << input;
    }
}

TEST(CleanCommand, takesBytesThatAreNotUtf8)
{
    EXPECT_EQ(run({}, QByteArrayLiteral("a\xff [x] b\xc3")).out, QByteArrayLiteral("A\uFFFD b\uFFFD "));
    EXPECT_EQ(run({}, QByteArray("a\0b", 3)).out, QByteArray("A\0b ", 4));
}

TEST(CleanCommand, readsLongInputToItsEnd)
{
    const QByteArray word = QByteArrayLiteral("blåbær ");
    const Outcome outcome = run({QStringLiteral("--no-capitalize")}, word.repeated(200'000));
    EXPECT_EQ(outcome.out, word.repeated(200'000));
}

TEST(CleanCommand, saysWhenTheInputCannotBeRead)
{
    QFile folder(QStringLiteral("/"));
    const Outcome outcome = run({}, folder); // never opened: every read fails
    EXPECT_EQ(outcome.status, ExitStatus::failed);
    EXPECT_EQ(outcome.out, QByteArray());
    EXPECT_TRUE(outcome.err.startsWith("tulvane: Could not read standard input: "))
        << outcome.err.constData();
    EXPECT_EQ(outcome.err.count('\n'), 1);
}

TEST(CleanCommand, knowsItsWords)
{
    const Outcome help = run({QStringLiteral("--help")}, QByteArray());
    EXPECT_EQ(help.status, ExitStatus::done);
    EXPECT_TRUE(help.out.contains("--no-capitalize"));
    EXPECT_TRUE(help.out.contains("--no-trailing-space"));
    EXPECT_EQ(run({QStringLiteral("--loud")}, QByteArray()).status, ExitStatus::wrongUsage);
    EXPECT_EQ(run({QStringLiteral("file")}, QByteArray()).status, ExitStatus::wrongUsage);
}

} // namespace
} // namespace tulvane::cli
