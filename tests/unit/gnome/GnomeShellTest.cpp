#include <platform/linux/gnome/GnomeShell.h>
#include <support/PrivateBus.h>

#include <QObject>
#include <QThread>

#include <gtest/gtest.h>

#include <chrono>
#include <thread>

namespace tulvane::test {

namespace {

/// What the shell shows of itself.
class ScriptedShell final : public QObject {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.gnome.Shell")
    Q_PROPERTY(QString ShellVersion READ version CONSTANT)

public:
    [[nodiscard]] QString version() const
    {
        std::this_thread::sleep_for(busy);
        return shown;
    }
    QString shown;
    std::chrono::milliseconds busy{0};
};

/// A bus with a shell on it that answers from a thread of its own: the question blocks.
class GnomeShellTest : public testing::Test {
protected:
    void SetUp() override
    {
        m_shell.moveToThread(&m_thread);
        m_thread.start();
    }
    void TearDown() override
    {
        m_thread.quit();
        m_thread.wait();
        QDBusConnection::disconnectFromBus(asking);
        QDBusConnection::disconnectFromBus(answering);
    }
    void show(const QString& version)
    {
        m_shell.shown = version;
        QDBusConnection bus = QDBusConnection::connectToBus(m_bus.address(), answering);
        ASSERT_TRUE(bus.registerObject(QStringLiteral("/org/gnome/Shell"), &m_shell,
                                       QDBusConnection::ExportAllProperties));
        ASSERT_TRUE(bus.registerService(QStringLiteral("org.gnome.Shell")));
    }
    void keepBusy(std::chrono::milliseconds time) { m_shell.busy = time; }
    [[nodiscard]] int version() const
    {
        return gnomeShellVersion(QDBusConnection::connectToBus(m_bus.address(), asking));
    }

private:
    const QString asking = QStringLiteral("asking");
    const QString answering = QStringLiteral("answering");
    PrivateBus m_bus;
    QThread m_thread;
    ScriptedShell m_shell;
};

} // namespace

TEST_F(GnomeShellTest, AShellThatIsBusyWithTheLoginIsWaitedFor)
{
    keepBusy(std::chrono::milliseconds(800));
    show(QStringLiteral("48.1"));
    EXPECT_EQ(version(), 48);
}

TEST_F(GnomeShellTest, TheVersionIsWhatComesBeforeThePoint)
{
    show(QStringLiteral("48.1"));
    EXPECT_EQ(version(), 48);
}

TEST_F(GnomeShellTest, OneThatIsNotOutYetHasAVersionToo)
{
    show(QStringLiteral("50.alpha"));
    EXPECT_EQ(version(), 50);
}

TEST_F(GnomeShellTest, WhatIsNoVersionIsNone)
{
    show(QStringLiteral("new"));
    EXPECT_EQ(version(), 0);
}

TEST_F(GnomeShellTest, WhereThereIsNoShellThereIsNoVersion)
{
    EXPECT_EQ(version(), 0);
    EXPECT_EQ(gnomeShellVersion(QDBusConnection(QStringLiteral("no connection"))), 0);
}

} // namespace tulvane::test

#include "GnomeShellTest.moc"
