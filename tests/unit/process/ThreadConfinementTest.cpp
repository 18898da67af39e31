#include <platform/linux/process/ThreadConfinement.h>
#include <support/ScratchFolder.h>

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <chrono>
#include <cstdio>
#include <string>
#include <thread>
#include <vector>

namespace tulvane {

namespace {

/// A call's error, 0 where it went well; what it opened is closed again.
int errorOf(int result)
{
    const int error = result < 0 ? errno : 0;
    if (result > 2)
        close(result);
    return error;
}

class ConfinedThread : public testing::Test {
protected:
    void SetUp() override
    {
        folder.write(u"there"_qs, "content");
        m_there = folder.file(u"there"_qs).toStdString();
        m_new = folder.file(u"new"_qs).toStdString();
    }

    /// Runs `work` on a thread without rights, or skips the test where the kernel cannot take them.
    template <class Work>
    void withoutRights(const Work& work)
    {
        Confinement taken;
        std::thread([&] {
            taken = confineThread();
            if (taken.files && taken.calls)
                work();
        }).join();
        if (!taken.files || !taken.calls)
            GTEST_SKIP() << "this kernel has no Landlock or no seccomp";
    }

    test::ScratchFolder folder;
    std::string m_there;
    std::string m_new;
};

} // namespace

TEST_F(ConfinedThread, ReadsFilesAndWritesNone)
{
    withoutRights([this] {
        EXPECT_EQ(errorOf(open(m_there.c_str(), O_RDONLY | O_CLOEXEC)), 0);
        EXPECT_EQ(errorOf(open(m_there.c_str(), O_RDWR | O_CLOEXEC)), EACCES);
        EXPECT_EQ(errorOf(open(m_new.c_str(), O_WRONLY | O_CREAT | O_CLOEXEC, 0600)), EACCES);
        EXPECT_EQ(errorOf(mkdir(m_new.c_str(), 0700)), EACCES);
        EXPECT_EQ(errorOf(symlink(m_there.c_str(), m_new.c_str())), EACCES);
        EXPECT_EQ(errorOf(rename(m_there.c_str(), m_new.c_str())), EACCES);
        EXPECT_EQ(errorOf(unlink(m_there.c_str())), EACCES);
    });
    EXPECT_EQ(folder.read(u"there"_qs), "content");
    EXPECT_NE(access(m_new.c_str(), F_OK), 0);
}

TEST_F(ConfinedThread, OpensNoSocketAndStartsNoProgram)
{
    withoutRights([] {
        EXPECT_EQ(errorOf(socket(AF_INET, SOCK_STREAM, 0)), EACCES);
        EXPECT_EQ(errorOf(socket(AF_UNIX, SOCK_STREAM, 0)), EACCES);
        char name[] = "/bin/true";
        char* arguments[] = {name, nullptr};
        EXPECT_EQ(execv(name, arguments), -1);
        EXPECT_EQ(errno, EACCES);
    });
}

TEST_F(ConfinedThread, HandsItsLackOfRightsToThreadsThatItStarts)
{
    withoutRights([this] {
        std::thread([this] {
            EXPECT_EQ(errorOf(open(m_new.c_str(), O_WRONLY | O_CREAT | O_CLOEXEC, 0600)), EACCES);
            EXPECT_EQ(errorOf(socket(AF_INET, SOCK_STREAM, 0)), EACCES);
        }).join();
    });
}

TEST_F(ConfinedThread, LeavesTheOtherThreadsTheirs)
{
    withoutRights([] {});
    EXPECT_EQ(errorOf(socket(AF_UNIX, SOCK_STREAM, 0)), 0);
    folder.write(u"new"_qs, "written");
    EXPECT_EQ(folder.read(u"new"_qs), "written");
}

TEST_F(ConfinedThread, IsConfinedWithinAMillisecond)
{
    std::vector<double> milliseconds;
    for (int i = 0; i < 21; ++i) {
        std::thread([&] {
            const auto start = std::chrono::steady_clock::now();
            confineThread();
            milliseconds.push_back(
                std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - start).count());
        }).join();
    }
    std::sort(milliseconds.begin(), milliseconds.end());
    std::printf("median %.3f ms\n", milliseconds[10]);
    EXPECT_LT(milliseconds[10], 1.0);
}

} // namespace tulvane
