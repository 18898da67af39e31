#include <audio/RecorderError.h>

#include <gtest/gtest.h>

using tulvane::RecorderError;

TEST(RecorderError, DescribesItselfToTheUser)
{
    EXPECT_EQ(RecorderError::engineStartFailed(QStringLiteral("busy")).description(),
              QStringLiteral("Could not start audio capture: busy"));
    EXPECT_EQ(RecorderError::noInputDevice().description(), QStringLiteral("No microphone is available."));
    EXPECT_EQ(RecorderError::unsupportedFormat().description(),
              QStringLiteral("The microphone's audio format is not supported."));
}

TEST(RecorderError, KeepsAPercentSignOfTheUnderlyingText)
{
    EXPECT_EQ(RecorderError::engineStartFailed(QStringLiteral("100 %1")).description(),
              QStringLiteral("Could not start audio capture: 100 %1"));
}

TEST(RecorderError, ComparesByKindAndPayload)
{
    EXPECT_EQ(RecorderError::noInputDevice(), RecorderError::noInputDevice());
    EXPECT_NE(RecorderError::noInputDevice(), RecorderError::unsupportedFormat());
    EXPECT_NE(RecorderError::engineStartFailed(QStringLiteral("a")),
              RecorderError::engineStartFailed(QStringLiteral("b")));
    EXPECT_EQ(RecorderError::noInputDevice().kind(), RecorderError::Kind::noInputDevice);
}
