#include <platform/linux/storage/FileLock.h>
#include <support/ScratchFolder.h>

#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <thread>

namespace tulvane {
namespace {

using namespace std::chrono_literals;

TEST(FileLock, KeepsOthersOutUntilItGoes)
{
    const test::ScratchFolder folder;
    const QString path = folder.file(u"lock"_qs);
    {
        const auto first = FileLock::acquire(path, 0ms);
        ASSERT_TRUE(first);
        const auto second = FileLock::acquire(path, 10ms);
        ASSERT_FALSE(second);
        EXPECT_FALSE(second.error().isEmpty());
    }
    EXPECT_TRUE(FileLock::acquire(path, 0ms));
}

TEST(FileLock, WaitsForTheOneThatHoldsIt)
{
    const test::ScratchFolder folder;
    const QString path = folder.file(u"lock"_qs);
    std::optional<FileLock> first(std::move(FileLock::acquire(path, 0ms).value()));
    std::thread waiting([&path] { EXPECT_TRUE(FileLock::acquire(path, 10s)); });
    std::this_thread::sleep_for(20ms);
    first.reset();
    waiting.join();
}

TEST(FileLock, GoesWithItsProcessHoweverThatEnds)
{
    const test::ScratchFolder folder;
    const QString path = folder.file(u"lock"_qs);
    const pid_t child = ::fork();
    if (child == 0) {
        const auto lock = FileLock::acquire(path, 0ms);
        ::kill(::getpid(), lock ? SIGKILL : SIGTERM);
        ::_exit(1);
    }
    int status = 0;
    ASSERT_EQ(::waitpid(child, &status, 0), child);
    ASSERT_TRUE(WIFSIGNALED(status) && WTERMSIG(status) == SIGKILL) << "the child did not get the lock";
    EXPECT_TRUE(FileLock::acquire(path, 0ms));
}

TEST(FileLock, SaysWhyTheFileCannotBeMade)
{
    const test::ScratchFolder folder;
    const auto lock = FileLock::acquire(folder.file(u"nowhere/lock"_qs), 0ms);
    ASSERT_FALSE(lock);
    EXPECT_EQ(lock.error(), u"No such file or directory");
}

} // namespace
} // namespace tulvane
