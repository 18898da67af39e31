#include <app/cli/InterruptWatcher.h>

#include <QCoreApplication>
#include <QElapsedTimer>

#include <gtest/gtest.h>

#include <csignal>

using tulvane::cli::InterruptWatcher;

namespace {

void turn(int milliseconds)
{
    QElapsedTimer timer;
    timer.start();
    while (!timer.hasExpired(milliseconds))
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents | QEventLoop::AllEvents, 10);
}

} // namespace

TEST(InterruptWatcher, TellsOfEachSignalOnce)
{
    int stops = 0;
    const InterruptWatcher watcher(-1, [&] { ++stops; });
    std::raise(SIGINT);
    turn(50);
    EXPECT_EQ(stops, 1);
    std::raise(SIGTERM);
    turn(50);
    EXPECT_EQ(stops, 2);
}

TEST(InterruptWatcherDeathTest, TheSecondSignalEndsTheProcess)
{
    for (const int signal : {SIGINT, SIGTERM}) {
        const auto twice = [signal] {
            const InterruptWatcher watcher(-1, [] {});
            std::raise(signal);
            std::raise(signal);
        };
        EXPECT_EXIT(twice(), ::testing::KilledBySignal(signal), "");
    }
}
