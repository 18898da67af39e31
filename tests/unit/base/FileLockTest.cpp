#include <base/FileLock.h>
#include <support/ScratchFolder.h>

#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <atomic>
#include <thread>
#include <vector>

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
        EXPECT_TRUE(second.error().isHeld());
        EXPECT_FALSE(second.error().reason().isEmpty());
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
    EXPECT_FALSE(lock.error().isHeld());
    EXPECT_EQ(lock.error().reason(), u"No such file or directory");
}

TEST(FileLock, TheFileGoesWithTheLock)
{
    const test::ScratchFolder folder;
    const QString path = folder.file(u"lock"_qs);
    {
        const auto lock = FileLock::acquire(path, 0ms);
        ASSERT_TRUE(lock);
        EXPECT_TRUE(QFile::exists(path));
    }
    EXPECT_FALSE(QFile::exists(path));
}

TEST(FileLock, WhatAFileHoldsLocksNothing)
{
    const test::ScratchFolder folder;
    for (const QByteArray& left :
         {QByteArray(), QByteArray("1\nsomeone\nsomewhere\n"), QByteArray(100, '\0')})
        EXPECT_TRUE(FileLock::acquire(folder.write(u"lock"_qs, left), 0ms));
}

TEST(FileLock, OneAtATimeHoweverManyComeAndGo)
{
    const test::ScratchFolder folder;
    const QString path = folder.file(u"lock"_qs);
    std::atomic<int> inside = 0;
    std::atomic<int> crowds = 0;
    std::vector<std::jthread> threads;
    for (int number = 0; number < 4; ++number) {
        threads.emplace_back([&] {
            for (int round = 0; round < 200; ++round) {
                const auto lock = FileLock::acquire(path, 10s);
                crowds += !lock || ++inside != 1;
                --inside;
            }
        });
    }
    threads.clear();
    EXPECT_EQ(crowds, 0);
}

} // namespace
} // namespace tulvane
