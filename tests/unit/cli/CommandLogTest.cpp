#include <app/cli/CommandLog.h>
#include <support/ScratchFolder.h>

#include <QFile>
#include <QFileInfo>

#include <gtest/gtest.h>
#include <sys/stat.h>

namespace tulvane::cli {
namespace {

const QByteArray area = "com.dunio.Tulvane.audio";

TEST(CommandLog, ALineForAPersonNamesItsAreaAndMarksAnError)
{
    const QString text = QStringLiteral("No “mic”");
    EXPECT_EQ(logLine(QtInfoMsg, area, text, LogReader::person), "[audio] No “mic”\n");
    EXPECT_EQ(logLine(QtWarningMsg, area, text, LogReader::person), "[audio] No “mic”\n");
    EXPECT_EQ(logLine(QtCriticalMsg, area, text, LogReader::person), "[audio] error: No “mic”\n");
}

TEST(CommandLog, ALineForTheJournalBeginsWithItsLevel)
{
    const QString text = QStringLiteral("Said");
    EXPECT_EQ(logLine(QtDebugMsg, area, text, LogReader::journal), "<7>[audio] Said\n");
    EXPECT_EQ(logLine(QtInfoMsg, area, text, LogReader::journal), "<6>[audio] Said\n");
    EXPECT_EQ(logLine(QtWarningMsg, area, text, LogReader::journal), "<4>[audio] Said\n");
    EXPECT_EQ(logLine(QtCriticalMsg, area, text, LogReader::journal), "<3>[audio] Said\n");
    EXPECT_EQ(logLine(QtFatalMsg, area, text, LogReader::journal), "<2>[audio] Said\n");
    EXPECT_EQ(logLine(QtCriticalMsg, area, QStringLiteral("One\nTwo"), LogReader::journal),
              "<3>[audio] One\n<3>[audio] Two\n");
}

TEST(CommandLog, TheJournalReadsOnlyTheStreamThatIsItsOwn)
{
    const test::ScratchFolder folder;
    QFile stream(folder.file(QStringLiteral("stream")));
    ASSERT_TRUE(stream.open(QIODevice::WriteOnly));
    struct stat file{};
    ASSERT_EQ(fstat(stream.handle(), &file), 0);
    const QByteArray name = QByteArray::number(static_cast<qulonglong>(file.st_dev)) + ':' +
                            QByteArray::number(static_cast<qulonglong>(file.st_ino));
    EXPECT_EQ(logReader(stream.handle(), name), LogReader::journal);
    EXPECT_EQ(logReader(stream.handle(), "1:2"), LogReader::person);
    EXPECT_EQ(logReader(stream.handle(), {}), LogReader::person);
    EXPECT_EQ(logReader(-1, name), LogReader::person);
}

} // namespace
} // namespace tulvane::cli
