#include <speech/whisper/LibraryLog.h>
#include <support/LogCapture.h>

#include <gtest/gtest.h>

namespace tulvane {
namespace {

using test::LogCapture;

QStringList errors(const LogCapture& log)
{
    return log.texts("whisper", QtCriticalMsg);
}
QStringList details(const LogCapture& log)
{
    return log.texts("whisper", QtDebugMsg);
}

TEST(LibraryLog, sendsWarningsAndErrorsToTheErrorLevelAndAllElseToDebug)
{
    const LogCapture log;
    LibraryLog lines;
    lines.take(GGML_LOG_LEVEL_NONE, "none\n");
    lines.take(GGML_LOG_LEVEL_DEBUG, "debug\n");
    lines.take(GGML_LOG_LEVEL_INFO, "info\n");
    lines.take(GGML_LOG_LEVEL_WARN, "warning\n");
    lines.take(GGML_LOG_LEVEL_ERROR, "error\n");
    EXPECT_EQ(errors(log), (QStringList{u"warning"_qs, u"error"_qs}));
    EXPECT_EQ(details(log), (QStringList{u"none"_qs, u"debug"_qs, u"info"_qs}));
    EXPECT_EQ(log.lines().size(), 5);
}

TEST(LibraryLog, levelsHaveTheNumbersOfTheLibrary)
{
    EXPECT_EQ(GGML_LOG_LEVEL_WARN, 3);
    EXPECT_EQ(GGML_LOG_LEVEL_ERROR, 4);
    EXPECT_EQ(GGML_LOG_LEVEL_CONT, 5);
}

TEST(LibraryLog, trimsLinesAndIgnoresEmptyOnes)
{
    const LogCapture log;
    LibraryLog lines;
    lines.take(GGML_LOG_LEVEL_INFO, " \t whisper: n_mels = 80 \n\n");
    lines.take(GGML_LOG_LEVEL_ERROR, nullptr);
    lines.take(GGML_LOG_LEVEL_ERROR, "");
    lines.take(GGML_LOG_LEVEL_ERROR, " \n\t\n");
    lines.flush();
    EXPECT_EQ(details(log), QStringList{u"whisper: n_mels = 80"_qs});
    EXPECT_EQ(log.lines().size(), 1);
}

TEST(LibraryLog, joinsContinuationsToTheirLine)
{
    const LogCapture log;
    LibraryLog lines;
    lines.take(GGML_LOG_LEVEL_WARN, "features:");
    lines.take(GGML_LOG_LEVEL_CONT, " avx");
    EXPECT_TRUE(log.lines().isEmpty());
    lines.take(GGML_LOG_LEVEL_CONT, " fma\n");
    lines.take(GGML_LOG_LEVEL_INFO, "next\n");
    EXPECT_EQ(errors(log), QStringList{u"features: avx fma"_qs});
    EXPECT_EQ(details(log), QStringList{u"next"_qs});
}

TEST(LibraryLog, endsALineWhereTheNextBegins)
{
    const LogCapture log;
    LibraryLog lines;
    lines.take(GGML_LOG_LEVEL_ERROR, "no end");
    lines.take(GGML_LOG_LEVEL_INFO, "next\n");
    lines.take(GGML_LOG_LEVEL_CONT, "stray\n");
    EXPECT_EQ(errors(log), QStringList{u"no end"_qs});
    EXPECT_EQ(details(log), (QStringList{u"next"_qs, u"stray"_qs}));
}

TEST(LibraryLog, losesNothingAtItsEnd)
{
    const LogCapture log;
    {
        LibraryLog lines;
        lines.take(GGML_LOG_LEVEL_ERROR, "last words");
    }
    EXPECT_EQ(errors(log), QStringList{u"last words"_qs});
}

TEST(LibraryLog, takesPercentSignsQuotesAndBytesThatAreNotUtf8AsTheyAre)
{
    const LogCapture log;
    LibraryLog lines;
    lines.take(GGML_LOG_LEVEL_INFO, "%s \"100 %\" bl\xc3\xa5 \xff\n");
    EXPECT_EQ(details(log), QStringList{u"%s \"100 %\" blå \uFFFD"_qs});
}

} // namespace
} // namespace tulvane
