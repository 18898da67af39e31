#include <base/ByteCount.h>

#include <QLocale>

#include <gtest/gtest.h>

#include <limits>
#include <utility>

namespace tulvane {
namespace {

class ByteCount : public ::testing::TestWithParam<std::pair<qint64, const char*>> {
protected:
    ByteCount() { QLocale::setDefault(QLocale::c()); }
};

TEST_P(ByteCount, ReadsAsAFileSize)
{
    EXPECT_EQ(byteCountText(GetParam().first), QString::fromUtf8(GetParam().second));
}

INSTANTIATE_TEST_SUITE_P(
    Sizes, ByteCount,
    ::testing::Values(std::pair{0LL, "Zero KB"}, std::pair{1LL, "1 byte"}, std::pair{2LL, "2 bytes"},
                      std::pair{999LL, "999 bytes"}, std::pair{1000LL, "1 KB"}, std::pair{1499LL, "1 KB"},
                      std::pair{1500LL, "2 KB"}, std::pair{999'499LL, "999 KB"}, std::pair{999'500LL, "1 MB"},
                      std::pair{175'000'000LL, "175 MB"}, std::pair{458'149'999LL, "458.1 MB"},
                      std::pair{539'000'000LL, "539 MB"}, std::pair{999'949'999LL, "999.9 MB"},
                      std::pair{999'950'000LL, "1 GB"}, std::pair{1'530'000'000LL, "1.53 GB"},
                      std::pair{std::numeric_limits<qint64>::max(), "9.22 EB"}));

TEST(ByteCountLocale, UsesTheDefaultLocalesDecimalPoint)
{
    QLocale::setDefault(QLocale(QLocale::NorwegianBokmal, QLocale::Norway));
    EXPECT_EQ(byteCountText(1'530'000'000), QStringLiteral("1,53 GB"));
    QLocale::setDefault(QLocale::c());
}

} // namespace
} // namespace tulvane
