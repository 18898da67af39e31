#include <platform/linux/sway/ProgramWatch.h>
#include <support/Await.h>
#include <support/ScratchFolder.h>

#include <QProcess>

#include <gtest/gtest.h>
#include <unistd.h>

namespace tulvane::test {

namespace {

class ProgramWatchTest : public testing::Test {
protected:
    void SetUp() override
    {
        // Its name is this test's own: others may run beside it.
        ASSERT_TRUE(QFile::copy(QStringLiteral("/bin/bash"), file()));
    }
    [[nodiscard]] QString file() const { return m_folder.file(m_name); }
    /// It ends with its input.
    void start(QProcess& program, const char* script = "read line") const
    {
        program.start(file(), {QStringLiteral("-c"), QString::fromLatin1(script)});
        ASSERT_TRUE(program.waitForStarted());
    }

    ScratchFolder m_folder;
    QString m_name = QStringLiteral("tl%1").arg(getpid());
};

} // namespace

TEST_F(ProgramWatchTest, StartAndEndAreTold)
{
    ProgramWatch watch({m_name}, {QStringLiteral("/nowhere"), m_folder.path()});
    int changes = 0;
    QObject::connect(&watch, &ProgramWatch::changed, &watch, [&] { ++changes; });
    EXPECT_FALSE(watch.isRunning());
    for (int round = 1; round <= 2; ++round) {
        QProcess program;
        start(program);
        EXPECT_TRUE(waitUntil([&] { return watch.isRunning(); }));
        program.closeWriteChannel();
        EXPECT_TRUE(waitUntil([&] { return !watch.isRunning(); }));
        EXPECT_EQ(changes, 2 * round);
    }
}

TEST_F(ProgramWatchTest, OneThatRunsAlreadyIsSeen)
{
    QProcess program;
    start(program, "echo there; read line");
    ASSERT_TRUE(program.waitForReadyRead());
    ProgramWatch watch({m_name}, {});
    EXPECT_TRUE(watch.isRunning());
    program.closeWriteChannel();
    EXPECT_TRUE(waitUntil([&] { return !watch.isRunning(); }));
}

TEST_F(ProgramWatchTest, OneThatGoesIntoTheBackgroundIsFollowed)
{
    ProgramWatch watch({m_name}, {m_folder.path()});
    QProcess program;
    start(program, "( read line ) <&0 & read first");
    ASSERT_TRUE(waitUntil([&] { return watch.isRunning(); }));
    program.write("\n");
    // Whichever of the two has read the line, the other waits for the end of the input.
    EXPECT_TRUE(waitUntil([&] { return program.bytesToWrite() == 0; }));
    EXPECT_FALSE(waitUntil([&] { return !watch.isRunning(); }, std::chrono::milliseconds(300)));
    program.closeWriteChannel();
    EXPECT_TRUE(waitUntil([&] { return !watch.isRunning(); }));
}

TEST_F(ProgramWatchTest, AFileThatIsOnlyReadIsNoProgram)
{
    ProgramWatch watch({m_name}, {m_folder.path()});
    EXPECT_FALSE(m_folder.read(m_name).isEmpty());
    EXPECT_FALSE(waitUntil([&] { return watch.isRunning(); }, std::chrono::milliseconds(300)));
}

} // namespace tulvane::test
