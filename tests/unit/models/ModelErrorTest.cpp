#include <models/ModelError.h>

#include <QLocale>

#include <gtest/gtest.h>

namespace tulvane {
namespace {

TEST(ModelError, Descriptions)
{
    QLocale::setDefault(QLocale::c());
    EXPECT_EQ(ModelError::unexpectedSize(1'200'000, 539'000'000).description(),
              QStringLiteral("Downloaded 1.2 MB, expected about 539 MB. The download may be incomplete."));
    EXPECT_EQ(ModelError::httpStatus(404).description(),
              QStringLiteral("The server responded with HTTP 404."));
    EXPECT_EQ(ModelError::notAGGMLFile().description(),
              QStringLiteral("The downloaded file is not a ggml model. The Hugging Face repo may not provide "
                             "this file."));
    EXPECT_EQ(ModelError::checksumMismatch().description(),
              QStringLiteral("The downloaded file failed its checksum. Please try again."));
    EXPECT_EQ(ModelError::fileSystem(QStringLiteral("No such file")).description(),
              QStringLiteral("No such file"));
}

TEST(ModelError, EqualWhenKindAndPayloadAre)
{
    EXPECT_EQ(ModelError::httpStatus(404), ModelError::httpStatus(404));
    EXPECT_NE(ModelError::httpStatus(404), ModelError::httpStatus(403));
    EXPECT_NE(ModelError::unexpectedSize(1, 2), ModelError::unexpectedSize(2, 1));
    EXPECT_NE(ModelError::notAGGMLFile(), ModelError::checksumMismatch());
}

} // namespace
} // namespace tulvane
