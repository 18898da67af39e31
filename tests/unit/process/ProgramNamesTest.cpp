#include <platform/linux/process/ProgramNames.h>
#include <support/Await.h>
#include <support/ScratchFolder.h>

#include <QFile>
#include <QProcess>

#include <gtest/gtest.h>

namespace tulvane::test {

namespace {

QStringList namesOf(const QString& program, const QStringList& arguments)
{
    QProcess process;
    process.start(program, arguments);
    EXPECT_TRUE(process.waitForStarted());
    // The kernel closes the pipe that QProcess waits on before it sets up the new program's arguments.
    EXPECT_TRUE(waitUntil([&] {
        QFile line(QStringLiteral("/proc/%1/cmdline").arg(process.processId()));
        return line.open(QIODevice::ReadOnly) && !line.readAll().isEmpty();
    }));
    const QStringList names = programNames(static_cast<quint32>(process.processId()));
    process.kill();
    process.waitForFinished();
    return names;
}

} // namespace

TEST(ProgramNames, AProgramHasTheNameOfItsFile)
{
    const QStringList names = namesOf(QStringLiteral("/bin/sleep"), {QStringLiteral("60")});
    EXPECT_TRUE(names.contains(QStringLiteral("sleep")));
    EXPECT_FALSE(names.contains(QStringLiteral("60")));
}

TEST(ProgramNames, AScriptHasItsOwnBesideItsInterpreters)
{
    ScratchFolder scratch;
    const QString script = scratch.write(QStringLiteral("terminator"), "import time\ntime.sleep(60)\n");
    const QStringList names = namesOf(QStringLiteral("/usr/bin/python3"), {script});
    EXPECT_TRUE(names.contains(QStringLiteral("terminator"))) << qPrintable(names.join(u' '));
}

TEST(ProgramNames, AProcessThatIsNotThereHasNone)
{
    EXPECT_EQ(programNames(0), QStringList());
    EXPECT_EQ(programNames(0x7FFFFFFF), QStringList());
}

} // namespace tulvane::test
