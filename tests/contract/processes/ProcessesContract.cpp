#include <platform/fake/FakeProcesses.h>
#include <platform/linux/process/ChildProcesses.h>
#include <support/Await.h>
#include <support/ScratchFolder.h>

#include <gtest/gtest.h>

namespace tulvane::test {

namespace {

using Command = FakeProcesses::Command;

/// Either backend, with programs that end as the test wants.
class FakeSystem {
public:
    [[nodiscard]] Processes& processes() { return m_processes; }
    Command exitingWith(int status)
    {
        m_processes.exitStatus = status;
        return {QStringLiteral("/bin/program"), {}};
    }
    Command crashing() { return exitingWith(-1); }
    Command missing()
    {
        m_processes.exitStatus.reset();
        m_processes.startFailure = QStringLiteral("There is no such program.");
        return {QStringLiteral("/nowhere/program"), {}};
    }
    /// Notes the arguments that it gets.
    Command noting(const QStringList& arguments) { return {QStringLiteral("/bin/program"), arguments}; }
    [[nodiscard]] std::optional<QStringList> noted() const
    {
        if (!m_processes.commands.isEmpty())
            return m_processes.commands.last().second;
        return m_processes.detached.isEmpty() ? std::nullopt
                                              : std::optional(m_processes.detached.last().second);
    }

private:
    FakeProcesses m_processes;
};

class ShellSystem {
public:
    [[nodiscard]] Processes& processes() { return m_processes; }
    static Command exitingWith(int status) { return script(QStringLiteral("exit %1").arg(status)); }
    static Command crashing() { return script(QStringLiteral("kill -KILL $$")); }
    static Command missing() { return {QStringLiteral("/nowhere/program"), {}}; }
    Command noting(const QStringList& arguments)
    {
        const QString file = m_folder.file(QStringLiteral("noted"));
        return script(
            QStringLiteral("for one; do printf '%s\\0' \"$one\"; done > '%1.part'; mv '%1.part' '%1'")
                .replace(QStringLiteral("%1"), file),
            arguments);
    }
    [[nodiscard]] std::optional<QStringList> noted() const
    {
        if (!QFile::exists(m_folder.file(QStringLiteral("noted"))))
            return std::nullopt;
        const QString text = QString::fromUtf8(m_folder.read(QStringLiteral("noted")));
        return text.chopped(1).split(QChar(u'\0'));
    }

private:
    static Command script(const QString& text, const QStringList& arguments = {})
    {
        return {QStringLiteral("/bin/sh"),
                QStringList{QStringLiteral("-c"), text, QStringLiteral("name")} + arguments};
    }

    ScratchFolder m_folder;
    ChildProcesses m_processes;
};

template <class System>
class ProcessesContract : public testing::Test {
protected:
    [[nodiscard]] std::optional<int> run(const Command& command)
    {
        return m_system.processes().run(command.first, command.second);
    }
    [[nodiscard]] Result<void, QString> startDetached(const Command& command)
    {
        return m_system.processes().startDetached(command.first, command.second);
    }
    /// What the noting program was given, which may be more than the test's own arguments where it is a
    /// script.
    [[nodiscard]] bool wasGiven(const QStringList& arguments)
    {
        return waitUntil([&] { return m_system.noted() == arguments; });
    }

    System m_system;
};

using Systems = testing::Types<FakeSystem, ShellSystem>;
TYPED_TEST_SUITE(ProcessesContract, Systems);

const QStringList awkward{QStringLiteral("two words"), QStringLiteral("$HOME"), QStringLiteral("\"'\\"),
                          QString(), QStringLiteral("blåbær")};

} // namespace

TYPED_TEST(ProcessesContract, AnswersTheExitStatus)
{
    for (const int status : {0, 1, 64, 255})
        EXPECT_EQ(this->run(this->m_system.exitingWith(status)), status);
}

TYPED_TEST(ProcessesContract, ACrashIsMinusOneAndNoProgramIsNothing)
{
    EXPECT_EQ(this->run(this->m_system.crashing()), -1);
    EXPECT_EQ(this->run(this->m_system.missing()), std::nullopt);
}

TYPED_TEST(ProcessesContract, PassesArgumentsAsTheyAre)
{
    EXPECT_EQ(this->run(this->m_system.noting(awkward)), 0);
    EXPECT_TRUE(this->wasGiven(awkward));
}

TYPED_TEST(ProcessesContract, StartsAProgramThatIsLeftToItself)
{
    EXPECT_TRUE(this->startDetached(this->m_system.noting(awkward)));
    EXPECT_TRUE(this->wasGiven(awkward));
}

TYPED_TEST(ProcessesContract, SaysWhyNothingCouldBeStarted)
{
    const auto started = this->startDetached(this->m_system.missing());
    ASSERT_FALSE(started);
    EXPECT_FALSE(started.error().isEmpty());
}

} // namespace tulvane::test
