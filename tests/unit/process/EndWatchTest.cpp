#include <platform/linux/process/EndWatch.h>
#include <support/Await.h>
#include <support/ScratchFolder.h>

#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>

namespace tulvane::test {

namespace {

class EndWatchTest : public testing::Test {
protected:
    [[nodiscard]] bool hasRun() const { return QFile::exists(m_file); }

    ScratchFolder m_folder;
    /// With what a shell would take apart.
    QString m_file = m_folder.file(QStringLiteral("it's $HOME"));
    QStringList m_command{QStringLiteral("touch"), m_file};
};

} // namespace

TEST_F(EndWatchTest, TheCommandIsRunForAProgramThatIsKilled)
{
    const pid_t program = fork();
    if (program == 0) {
        const EndWatch watch(QProcessEnvironment::systemEnvironment(), m_command);
        std::raise(SIGKILL);
    }
    waitpid(program, nullptr, 0);
    EXPECT_TRUE(waitUntil([this] { return hasRun(); }));
}

TEST_F(EndWatchTest, NothingIsRunWhereAllIsWell)
{
    {
        const EndWatch watch(QProcessEnvironment::systemEnvironment(), m_command);
    }
    EXPECT_FALSE(waitUntil([this] { return hasRun(); }, std::chrono::milliseconds(300)));
}

} // namespace tulvane::test
