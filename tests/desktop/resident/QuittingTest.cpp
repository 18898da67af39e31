#include "ResidentDesktop.h"

#include <support/Await.h>
#include <support/TinyModel.h>

#include <QElapsedTimer>

#include <gtest/gtest.h>

namespace tulvane::test {
namespace {

using namespace std::chrono_literals;

// The end of the program while its engine is at work. The model has the shape of a real one of 480 MB, so
// that a load takes its time, and even the warm-up many seconds; its weights are zero.
class Quitting : public testing::Test {
protected:
    Quitting()
    {
        TinyModel{.audioState = 768,
                  .audioHeads = 12,
                  .audioLayers = 12,
                  .textState = 768,
                  .textHeads = 12,
                  .textLayers = 12}
            .writeSparse(here.scratch.file(QStringLiteral("data/Tulvane/Models/nb-whisper-medium-q5_0.bin")));
    }
    [[nodiscard]] bool logs(const char* line)
    {
        return waitUntil([&] {
            here.readLog();
            return here.log.contains(line);
        });
    }
    void expectAQuickEnd(QProcess& program)
    {
        QElapsedTimer timer;
        timer.start();
        program.terminate();
        ASSERT_TRUE(program.waitForFinished(10'000));
        EXPECT_LT(timer.elapsed(), 1000);
        EXPECT_EQ(program.exitStatus(), QProcess::NormalExit);
        EXPECT_EQ(program.exitCode(), 0);
    }

    ResidentDesktop here;
};

TEST_F(Quitting, DoesNotWaitForATranscription)
{
    QProcess& program = here.launch();
    ASSERT_TRUE(logs("Loaded nb-whisper-medium-q5_0.bin"));
    runEventLoopFor(300ms);
    ASSERT_EQ(here.status()[QStringLiteral("modelLoading")], true) << "the warm-up is still under way";
    expectAQuickEnd(program);
}

TEST_F(Quitting, DoesNotWaitForALoad)
{
    QProcess& program = here.launch();
    ASSERT_EQ(here.status()[QStringLiteral("modelLoading")], true);
    expectAQuickEnd(program);
}

TEST_F(Quitting, AStartMeanwhileBecomesTheNewProgram)
{
    QProcess& old = here.launch();
    ASSERT_TRUE(logs("Loaded nb-whisper-medium-q5_0.bin"));
    old.terminate();
    const auto next = here.begin({QStringLiteral("--background")});
    ASSERT_TRUE(old.waitForFinished(1000));
    ASSERT_TRUE(next->waitForStarted());
    EXPECT_TRUE(waitUntil([&] { return !here.status().isEmpty(); }));
    EXPECT_EQ(next->state(), QProcess::Running);
    EXPECT_EQ(next->readAllStandardError().contains("running already"), false);
    expectAQuickEnd(*next);
}

} // namespace
} // namespace tulvane::test
