#include <ports/CoreDump.h>

#include <QFile>

#include <gtest/gtest.h>
#include <sys/resource.h>

namespace tulvane {

TEST(CoreDump, HasNeitherAFileNorMemory)
{
    leaveNoCoreDump();
    rlimit limit{};
    ASSERT_EQ(getrlimit(RLIMIT_CORE, &limit), 0);
    EXPECT_EQ(limit.rlim_cur, 0U);
    QFile filter(QStringLiteral("/proc/self/coredump_filter"));
    if (!filter.open(QIODevice::ReadOnly))
        GTEST_SKIP() << "this kernel has no filter for core dumps";
    EXPECT_EQ(filter.readAll().trimmed().toUInt(nullptr, 16), 0U);
}

} // namespace tulvane
