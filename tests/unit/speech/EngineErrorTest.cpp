#include <speech/whisper/EngineError.h>

#include <gtest/gtest.h>

#include <limits>

namespace tulvane {
namespace {

TEST(EngineError, namesTheModelFileWithoutItsFolders)
{
    const EngineError error = EngineError::modelLoadFailed(u"/home/kari/Modeller/nb whisper.bin"_qs);
    EXPECT_EQ(error.kind(), EngineError::Kind::modelLoadFailed);
    EXPECT_EQ(error.modelFile(), u"/home/kari/Modeller/nb whisper.bin");
    EXPECT_EQ(error.description(), u"Could not load the speech model at nb whisper.bin.");
}

TEST(EngineError, givesTheCodeInDecimal)
{
    EXPECT_EQ(EngineError::transcriptionFailed(-6).description(),
              u"Transcription failed (whisper error -6).");
    EXPECT_EQ(EngineError::transcriptionFailed(-6).code(), -6);
    EXPECT_EQ(EngineError::transcriptionFailed(std::numeric_limits<qint32>::min()).description(),
              u"Transcription failed (whisper error -2147483648).");
    EXPECT_EQ(EngineError::transcriptionFailed(1234567).description(),
              u"Transcription failed (whisper error 1234567).");
}

TEST(EngineError, saysThatNoModelIsLoaded)
{
    EXPECT_EQ(EngineError::noModelLoaded().description(), u"No speech model is loaded.");
}

TEST(EngineError, isEqualWhereKindAndPayloadAre)
{
    EXPECT_EQ(EngineError::modelLoadFailed(u"a"_qs), EngineError::modelLoadFailed(u"a"_qs));
    EXPECT_NE(EngineError::modelLoadFailed(u"a"_qs), EngineError::modelLoadFailed(u"b"_qs));
    EXPECT_NE(EngineError::transcriptionFailed(-1), EngineError::transcriptionFailed(-2));
    EXPECT_NE(EngineError::transcriptionFailed(0), EngineError::noModelLoaded());
}

// The program's own codes must not be mistaken for the library's, which are -2 to -9.
TEST(EngineError, ownCodesAreNoneOfTheLibrarys)
{
    EXPECT_EQ(EngineError::textNotCopied, -1);
    EXPECT_LT(EngineError::unknownLanguage, -9);
    EXPECT_LT(EngineError::libraryThrew, -9);
    EXPECT_LT(EngineError::notEnoughMemory, -9);
    EXPECT_NE(EngineError::unknownLanguage, EngineError::libraryThrew);
    EXPECT_NE(EngineError::notEnoughMemory, EngineError::libraryThrew);
}

} // namespace
} // namespace tulvane
