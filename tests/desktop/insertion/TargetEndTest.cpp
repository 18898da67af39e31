#include "AwaitProgram.h"

#include <QElapsedTimer>

#include <gmock/gmock.h>

namespace tulvane::test {

// A target that cannot start, for want of a library, costs a moment, not the whole time limit.
TEST(AwaitProgram, reportsAProgramThatHasEndedAtOnceAndInItsOwnWords)
{
    QProcess process;
    process.start(QStringLiteral("sh"), {QStringLiteral("-c"), QStringLiteral("echo no such widget >&2")});
    QElapsedTimer timer;
    timer.start();
    std::string message;
    try {
        awaitProgram(process, "no window", [] { return false; });
    } catch (const std::runtime_error& error) {
        message = error.what();
    }
    EXPECT_LT(timer.elapsed(), 5000);
    EXPECT_THAT(message, testing::HasSubstr("no window; it has ended: no such widget"));
}

TEST(AwaitProgram, waitsForOneThatRuns)
{
    QProcess process;
    process.start(QStringLiteral("sleep"), {QStringLiteral("60")});
    QElapsedTimer timer;
    timer.start();
    EXPECT_NO_THROW(awaitProgram(process, "nothing", [&timer] { return timer.elapsed() > 50; }));
    EXPECT_THROW(awaitProgram(
                     process, "nothing", [] { return false; }, std::chrono::milliseconds(100)),
                 std::runtime_error);
    process.kill();
    process.waitForFinished();
}

} // namespace tulvane::test
