#include "ResidentDesktop.h"

#include <support/Await.h>

#include <QDirIterator>
#include <QFile>
#include <QRegularExpression>

#include <gtest/gtest.h>

namespace tulvane::test {
namespace {

/// What the program asked of the system, a line for each call.
class Trace final {
public:
    explicit Trace(const QString& file)
    {
        QFile trace(file);
        if (trace.open(QIODevice::ReadOnly))
            m_lines = QString::fromUtf8(trace.readAll()).split(u'\n');
    }

    [[nodiscard]] QStringList matching(const QString& expression) const
    {
        return m_lines.filter(QRegularExpression(expression));
    }
    [[nodiscard]] qsizetype size() const { return m_lines.size(); }

private:
    QStringList m_lines;
};

QStringList filesWith(const QString& folder, const QByteArray& text)
{
    QStringList found;
    QDirIterator files(folder, QDir::Files | QDir::Hidden, QDirIterator::Subdirectories);
    while (files.hasNext()) {
        QFile file(files.next());
        if (file.open(QIODevice::ReadOnly) && file.readAll().contains(text))
            found.append(file.fileName());
    }
    return found;
}

} // namespace

// One whole dictation under the eyes of the system-call tracer.
TEST(Privacy, NothingOfADictationReachesADiskAnArgumentALogOrTheNetwork)
{
    ResidentDesktop here;
    const QString traceFile = here.scratch.file(QStringLiteral("trace"));
    here.launch(
        {QStringLiteral("strace"), QStringLiteral("-f"), QStringLiteral("-qq"), QStringLiteral("-y"),
         QStringLiteral("-s"), QStringLiteral("400"), QStringLiteral("-o"), traceFile, QStringLiteral("-e"),
         QStringLiteral("trace=openat,open,creat,write,pwrite64,writev,connect,execve,rename,memfd_create")});
    here.openEntry();
    EXPECT_EQ(here.tulvane(words("start")).status, 0);
    here.speak(said);
    EXPECT_EQ(here.tulvane(words("stop")).status, 0);
    EXPECT_TRUE(here.waitForEntry(heard)) << qPrintable(here.entryText());
    ASSERT_TRUE(here.waitForPhase(QStringLiteral("idle")));
    here.readLog();
    EXPECT_TRUE(here.log.contains("Recording stopped"));
    EXPECT_FALSE(here.log.contains("dette er"));

    const Trace trace(traceFile);
    ASSERT_GT(trace.size(), 100);
    // "-y" names what each descriptor is: a file is a path without a colon.
    EXPECT_EQ(trace.matching(QStringLiteral("write.*</[^>:]*>.*dette er")), QStringList());
    EXPECT_EQ(trace.matching(QStringLiteral("execve.*dette er")), QStringList());
    // Files are written for the counters and the settings, and nothing as long as sound ever is.
    const QRegularExpression size(QStringLiteral("write[^ ]*\\(\\d+<(/[^>:]*)>.*= (\\d+)$"));
    for (const QString& line : trace.matching(QStringLiteral("write"))) {
        const auto match = size.match(line);
        if (match.hasMatch() && !match.captured(1).startsWith(u"/dev/")) {
            EXPECT_LT(match.captured(2).toInt(), 4000) << qPrintable(line);
        }
    }
    EXPECT_EQ(trace.matching(QStringLiteral("connect\\(.*AF_INET")), QStringList());
    EXPECT_EQ(filesWith(here.scratch.path() + QStringLiteral("/data/Tulvane"), "dette er"), QStringList());
    EXPECT_EQ(filesWith(here.scratch.path() + QStringLiteral("/config"), "dette er"), QStringList());
    EXPECT_EQ(filesWith(here.desktop.home(), "dette er"), QStringList());
}

} // namespace tulvane::test
