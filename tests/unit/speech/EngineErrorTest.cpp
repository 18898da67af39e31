#include <speech/EngineError.h>

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

TEST(EngineError, saysWhyInASecondLineWhereThatIsKnown)
{
    using Kind = EngineObstacle::Kind;
    const auto second = [](const EngineObstacle& obstacle) {
        const QString text = EngineError::modelLoadFailed(u"a.bin"_qs, obstacle).description();
        return text.section(u'\n', 1);
    };
    EXPECT_EQ(second({}), QString());
    EXPECT_EQ(second({Kind::unreadable, u"Permission denied"_qs}),
              u"The file cannot be read: Permission denied");
    EXPECT_EQ(second({Kind::damaged, u"too short"_qs}),
              u"The file is damaged, or no speech model: too short");
    EXPECT_EQ(second({Kind::noBackend, {}}),
              u"A part of Tulvane is missing: there is nothing to compute with.");
    EXPECT_EQ(second({Kind::memory, {}, 2'100'000'000, 900'000'000}),
              u"This needs 2100 MB of memory, and 900 MB are available.");
    EXPECT_EQ(second({Kind::library, u"failed to encode"_qs}), u"The speech library says: failed to encode");
    EXPECT_EQ(EngineError::transcriptionFailed(-6, {Kind::library, u"failed to encode"_qs}).description(),
              u"Transcription failed (whisper error -6).\nThe speech library says: failed to encode");
}

TEST(EngineError, isEqualWhereKindAndPayloadAre)
{
    EXPECT_EQ(EngineError::modelLoadFailed(u"a"_qs), EngineError::modelLoadFailed(u"a"_qs));
    EXPECT_NE(EngineError::modelLoadFailed(u"a"_qs), EngineError::modelLoadFailed(u"b"_qs));
    EXPECT_NE(EngineError::transcriptionFailed(-1), EngineError::transcriptionFailed(-2));
    EXPECT_NE(EngineError::transcriptionFailed(0), EngineError::noModelLoaded());
    EXPECT_EQ(EngineError::transcriptionFailed(-6),
              EngineError::transcriptionFailed(-6, {EngineObstacle::Kind::library, u"why"_qs}));
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
