#include <platform/linux/transfers/http/HttpOptions.h>

#include <gtest/gtest.h>

using namespace std::chrono_literals;

namespace tulvane::transfers {
namespace {

// A large model over a slow line takes hours; a server that is gone should not.
TEST(HttpOptions, AreAsPatientAsALargeModelNeeds)
{
    const HttpOptions options;
    EXPECT_EQ(options.stallTimeout, 60s);
    EXPECT_EQ(options.totalTimeout, 6h);
    EXPECT_EQ(options.reserve, 64 * 1024 * 1024);
}

} // namespace
} // namespace tulvane::transfers
