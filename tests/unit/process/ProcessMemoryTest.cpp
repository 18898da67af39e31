#include <platform/linux/process/ProcessMemory.h>
#include <support/ScratchFolder.h>

#include <QFileInfo>

#include <gtest/gtest.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

namespace tulvane {
namespace {

constexpr qint64 mega = 1'000'000;

/// A made-up /proc and /sys.
class ProcessMemoryTest : public ::testing::Test {
protected:
    void write(const QString& path, const QByteArray& content)
    {
        QDir().mkpath(QFileInfo(m_root.path() + path).path());
        m_root.write(path.mid(1), content);
    }
    void writeMachine(qint64 kilobytes)
    {
        write(u"/proc/meminfo"_qs, "MemTotal:  99999999 kB\nMemFree:  1 kB\nMemAvailable:  " +
                                       QByteArray::number(kilobytes) + " kB\n");
    }
    [[nodiscard]] qint64 available() const { return ProcessMemory(m_root.path()).available(); }

    test::ScratchFolder m_root;
};

TEST_F(ProcessMemoryTest, isUnlimitedWhereTheSystemTellsNothing)
{
    EXPECT_EQ(available(), SystemMemory::unlimited);
    write(u"/proc/meminfo"_qs, "nonsense\nMemAvailable: many kB\n");
    EXPECT_EQ(available(), SystemMemory::unlimited);
}

TEST_F(ProcessMemoryTest, isWhatTheMachineHasAndCanSwap)
{
    writeMachine(1000);
    EXPECT_EQ(available(), 1000 * 1024);
    write(u"/proc/meminfo"_qs, "SwapCached: 7 kB\nSwapFree: 500 kB\nMemAvailable: 1000 kB\n");
    EXPECT_EQ(available(), 1500 * 1024);
}

TEST_F(ProcessMemoryTest, isWhatTheGroupLeaves)
{
    writeMachine(1'000'000);
    write(u"/proc/self/cgroup"_qs, "0::/user.slice/app\n");
    const QString group = u"/sys/fs/cgroup/user.slice/app"_qs;
    write(group + u"/memory.max", "max\n");
    write(group + u"/memory.current", "5000000\n");
    EXPECT_EQ(available(), 1'000'000 * 1024); // "max" is no limit
    write(group + u"/memory.max", "105000000\n");
    EXPECT_EQ(available(), 100 * mega);
    write(group + u"/memory.stat", "anon 3\ninactive_file 2000000\nactive_file 9\n");
    EXPECT_EQ(available(), 102 * mega); // file pages make room
    write(group + u"/memory.max", "1000000\n");
    EXPECT_EQ(available(), 0);
}

TEST_F(ProcessMemoryTest, isWhatTheTightestGroupAboveLeaves)
{
    writeMachine(1'000'000);
    write(u"/proc/self/cgroup"_qs, "0::/a/b/c\n");
    write(u"/sys/fs/cgroup/a/b/c/memory.max"_qs, "900000000");
    write(u"/sys/fs/cgroup/a/b/c/memory.current"_qs, "0");
    write(u"/sys/fs/cgroup/a/memory.max"_qs, "70000000");
    write(u"/sys/fs/cgroup/a/memory.current"_qs, "20000000");
    EXPECT_EQ(available(), 50 * mega);
    write(u"/sys/fs/cgroup/memory.max"_qs, "30000000");
    write(u"/sys/fs/cgroup/memory.current"_qs, "20000000");
    EXPECT_EQ(available(), 10 * mega);
}

TEST_F(ProcessMemoryTest, isWhatAGroupOfTheRootLeaves)
{
    writeMachine(1'000'000);
    write(u"/proc/self/cgroup"_qs, "0::/\n");
    write(u"/sys/fs/cgroup/memory.max"_qs, "30000000");
    write(u"/sys/fs/cgroup/memory.current"_qs, "20000000");
    EXPECT_EQ(available(), 10 * mega);
}

TEST_F(ProcessMemoryTest, knowsGroupsOfVersionOne)
{
    writeMachine(1'000'000);
    write(u"/proc/self/cgroup"_qs, "5:cpu,cpuacct:/x\n4:hugetlb,memory:/container/12\n0::/\n");
    write(u"/sys/fs/cgroup/memory/container/12/memory.limit_in_bytes"_qs, "60000000");
    write(u"/sys/fs/cgroup/memory/container/12/memory.usage_in_bytes"_qs, "20000000");
    write(u"/sys/fs/cgroup/memory/container/12/memory.stat"_qs, "total_inactive_file 1000000\n");
    EXPECT_EQ(available(), 41 * mega);
}

#if !defined(__SANITIZE_ADDRESS__) && !defined(__SANITIZE_THREAD__)
/// Runs in a child process under a limit of so many bytes beyond what is used; true when it says so.
template <class Says>
bool inProcessWithRoomFor(int resource, rlim_t room, Says says)
{
    const pid_t child = fork();
    if (child == 0) {
        QFile statm(u"/proc/self/statm"_qs);
        const bool opened = statm.open(QIODevice::ReadOnly);
        const rlim_t used =
            statm.readAll().split(' ').value(0).toULongLong() * static_cast<rlim_t>(getpagesize());
        const rlimit limit{used + room, used + room};
        setrlimit(static_cast<__rlimit_resource>(resource), &limit);
        _exit(opened && says() ? 0 : 1);
    }
    int status = 0;
    waitpid(child, &status, 0);
    return WIFEXITED(status) && WEXITSTATUS(status) == 0;
}

TEST(ProcessMemoryLimits, countsTheLimitOfTheAddressSpace)
{
    EXPECT_TRUE(inProcessWithRoomFor(RLIMIT_AS, 200 * mega, [] {
        const ProcessMemory memory;
        return memory.available() <= 200 * mega && memory.available() > 150 * mega &&
               !memory.canReserve(250 * mega) && memory.canReserve(100 * mega);
    }));
}

TEST(ProcessMemoryLimits, countsTheLimitOfData)
{
    EXPECT_TRUE(
        inProcessWithRoomFor(RLIMIT_DATA, 0, [] { return ProcessMemory().available() < 1000 * mega; }));
}
#endif

} // namespace
} // namespace tulvane
