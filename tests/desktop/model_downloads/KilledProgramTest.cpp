#include "DownloadRig.h"

#include <support/Await.h>
#include <support/Signals.h>
#include <support/Soak.h>

#include <QProcess>

#include <csignal>

namespace tulvane {
namespace {

using test::DownloadRig;
using test::TransferKind;
using test::waitUntil;

/// The real thing in a process of its own.
class ProgramProcess final {
public:
    explicit ProgramProcess(const DownloadRig& rig)
    {
        m_process.setProcessChannelMode(QProcess::ForwardedErrorChannel);
        m_process.start(QStringLiteral(TULVANE_DOWNLOAD_PROGRAM), rig.programArguments());
        EXPECT_TRUE(m_process.waitForStarted());
    }
    ~ProgramProcess()
    {
        m_process.kill();
        m_process.waitForFinished();
    }
    ProgramProcess(const ProgramProcess&) = delete;
    ProgramProcess& operator=(const ProgramProcess&) = delete;

    [[nodiscard]] bool waitFor(const QString& state, double fraction = 0)
    {
        return waitUntil([&] {
            while (m_process.canReadLine()) {
                const QStringList words = QString::fromUtf8(m_process.readLine()).trimmed().split(u' ');
                m_state = words.value(0);
                m_fraction = words.value(1).toDouble();
                if (m_first.isEmpty())
                    m_first = m_state;
                if (m_state == state && m_fraction >= fraction)
                    return true;
            }
            return false;
        });
    }
    [[nodiscard]] bool waitForSuccess()
    {
        const bool ended = waitUntil([this] { return m_process.state() == QProcess::NotRunning; });
        return ended && m_process.exitStatus() == QProcess::NormalExit && m_process.exitCode() == 0;
    }
    void kill() { test::sendSignal(m_process, SIGKILL); }
    [[nodiscard]] double fraction() const { return m_fraction; }

private:
    QProcess m_process;
    QString m_state;
    QString m_first;
    double m_fraction = 0;
};

class KilledProgram : public ::testing::Test {
protected:
    template <class Case>
    void often(const Case& body) const
    {
        const int count = test::soakCount(2, 20);
        for (int i = 0; i < count && !HasFailure(); ++i) {
            SCOPED_TRACE(i);
            DownloadRig rig(TransferKind::detached);
            rig.script({{{QStringLiteral("rate"), 3'000'000}}});
            body(rig);
        }
    }
};

TEST_F(KilledProgram, TheDownloadGoesOnAndTheNextProgramShowsHowFarItIs)
{
    often([](DownloadRig& rig) {
        ProgramProcess first(rig);
        const double until = 0.05 + 0.7 * QRandomGenerator::global()->generateDouble();
        ASSERT_TRUE(first.waitFor(QStringLiteral("downloading"), until));
        first.kill();
        ProgramProcess second(rig);
        ASSERT_TRUE(second.waitFor(QStringLiteral("downloading")));
        EXPECT_GE(second.fraction(), until);
        EXPECT_TRUE(second.waitForSuccess());
        rig.expectOnlyTheModel();
        EXPECT_EQ(rig.askedFrom().size(), 1);
    });
}

TEST_F(KilledProgram, WhatFinishedMeanwhileIsInstalledByTheNext)
{
    often([](DownloadRig& rig) {
        ProgramProcess first(rig);
        ASSERT_TRUE(first.waitFor(QStringLiteral("downloading"), 0.1));
        first.kill();
        ASSERT_TRUE(rig.waitForNoHelper());
        ProgramProcess second(rig);
        EXPECT_TRUE(second.waitForSuccess());
        rig.expectOnlyTheModel();
        EXPECT_EQ(rig.askedFrom().size(), 1);
    });
}

TEST_F(KilledProgram, AtTheMomentOfTheHandOverNothingIsLost)
{
    often([](DownloadRig& rig) {
        rig.script({});
        ProgramProcess first(rig);
        const int wait = QRandomGenerator::global()->bounded(60);
        ASSERT_TRUE(first.waitFor(QStringLiteral("downloading")));
        // The moment is what the test varies; there is no event to wait for.
        tulvane::test::runEventLoopFor(std::chrono::milliseconds(wait));
        first.kill();
        ProgramProcess second(rig);
        EXPECT_TRUE(second.waitForSuccess());
        rig.expectOnlyTheModel();
        EXPECT_EQ(rig.askedFrom().size(), 1);
    });
}

TEST_F(KilledProgram, AfterItsEndNoOtherProcessIsKilledInItsPlace)
{
    DownloadRig rig(TransferKind::detached);
    ProgramProcess ended(rig);
    ASSERT_TRUE(ended.waitForSuccess());
    ended.kill();
}

TEST_F(KilledProgram, TogetherWithItsHelperItIsGoneOnFrom)
{
    often([](DownloadRig& rig) {
        ProgramProcess first(rig);
        ASSERT_TRUE(first.waitFor(QStringLiteral("downloading"), 0.3));
        first.kill();
        for (const int helper : rig.helpers())
            test::sendSignal(helper, SIGKILL);
        ASSERT_TRUE(rig.waitForNoHelper());
        ProgramProcess second(rig);
        EXPECT_TRUE(second.waitForSuccess());
        rig.expectOnlyTheModel();
        ASSERT_EQ(rig.askedFrom().size(), 2);
        EXPECT_GT(rig.askedFrom().last(), 0);
    });
}

TEST_F(KilledProgram, TwoProcessesAtOnceInstallOneFile)
{
    often([](DownloadRig& rig) {
        ProgramProcess first(rig);
        ProgramProcess second(rig);
        EXPECT_TRUE(first.waitForSuccess());
        EXPECT_TRUE(second.waitForSuccess());
        rig.expectOnlyTheModel();
        EXPECT_EQ(rig.askedFrom().size(), 1);
    });
}

} // namespace
} // namespace tulvane
