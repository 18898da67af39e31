#include "DownloadRig.h"

#include <platform/linux/transfers/DetachedTransfers.h>
#include <platform/linux/transfers/HelperAddress.h>
#include <platform/linux/transfers/LineSocket.h>
#include <platform/linux/transfers/TransferFolder.h>
#include <support/Await.h>
#include <support/LogCapture.h>
#include <support/Signals.h>
#include <support/Soak.h>

#include <QFileInfo>
#include <QJsonArray>
#include <QProcess>

#include <csignal>

namespace tulvane {
namespace {

using test::DownloadRig;
using test::TransferKind;
using test::waitUntil;
using Kind = ModelState::Kind;

constexpr int slowBytesPerSecond = 3'000'000;

class Helper : public ::testing::Test {
protected:
    [[nodiscard]] static ModelState state(const DownloadRig& rig, const DownloadRig::Program& program)
    {
        return program.manager->state(rig.model.id);
    }
    /// Starts a download and waits until some of it is there. The first requests are served slowly.
    [[nodiscard]] static DownloadRig::Program underWay(DownloadRig& rig, double fraction = 0.2,
                                                       int slowRequests = 1)
    {
        rig.script(QList<QJsonObject>(slowRequests, {{QStringLiteral("rate"), slowBytesPerSecond}}));
        auto program = rig.launch();
        program.manager->download(rig.model);
        EXPECT_TRUE(waitUntil([&] { return state(rig, program).fraction() > fraction; }));
        return program;
    }

    DownloadRig m_rig{TransferKind::detached};
};

TEST_F(Helper, IsNotStartedWhileThereIsNothingToDo)
{
    const auto program = m_rig.launch();
    EXPECT_TRUE(m_rig.helpers().isEmpty());
    EXPECT_EQ(state(m_rig, program), ModelState::notDownloaded());
}

TEST_F(Helper, WhatWasLeftAloneForAMonthIsRemovedWithoutIt)
{
    const transfers::TransferFolder folder(m_rig.folders.transfers());
    {
        auto program = m_rig.launch();
        m_rig.script({{{QStringLiteral("cut"), 1'000'000}}});
        EXPECT_EQ(m_rig.download(program).kind(), Kind::failed);
        ASSERT_TRUE(m_rig.waitForNoHelper());
    }
    QFile record(folder.recordFile(transfers::TransferRecord::keyOf(m_rig.model.downloadURL(m_rig.hub))));
    ASSERT_TRUE(record.open(QIODevice::ReadWrite));
    ASSERT_TRUE(
        record.setFileTime(QDateTime::currentDateTime().addDays(-31), QFileDevice::FileModificationTime));
    record.close();
    const auto program = m_rig.launch();
    EXPECT_TRUE(m_rig.helpers().isEmpty());
    EXPECT_TRUE(m_rig.files().isEmpty()) << qPrintable(m_rig.files().join(u' '));
}

TEST_F(Helper, EndsByItselfThoughProgramsAreThere)
{
    auto program = m_rig.launch();
    m_rig.expectInstalled(program);
    EXPECT_TRUE(m_rig.waitForNoHelper());
    ASSERT_TRUE(program.manager->deleteModel(m_rig.model));
    m_rig.expectInstalled(program);
}

TEST_F(Helper, OnlyTheUserCanTalkToIt)
{
    const auto program = underWay(m_rig);
    QFile keeper(transfers::TransferFolder(m_rig.folders.transfers()).keeperFile());
    ASSERT_TRUE(keeper.open(QIODevice::ReadOnly));
    const QFileInfo socket(QString::fromUtf8(keeper.readAll()));
    ASSERT_TRUE(socket.exists());
    EXPECT_EQ(socket.permissions() & 0x0fff, QFileDevice::ReadUser | QFileDevice::WriteUser);
    EXPECT_EQ(QFileInfo(socket.path()).permissions() & 0x0fff,
              QFileDevice::ReadUser | QFileDevice::WriteUser | QFileDevice::ExeUser);
    program.manager->cancel(m_rig.model);
    ASSERT_TRUE(m_rig.waitForNoHelper());
    EXPECT_FALSE(QFileInfo::exists(socket.filePath()));
}

TEST_F(Helper, IsOneForAllPrograms)
{
    auto first = underWay(m_rig);
    const auto second = m_rig.launch();
    EXPECT_EQ(m_rig.helpers().size(), 1);
    EXPECT_EQ(state(m_rig, second).kind(), Kind::downloading);
    EXPECT_GT(state(m_rig, second).fraction(), 0.2);
    QProcess third;
    third.start(QStringLiteral(TULVANE_TRANSFER_HELPER),
                {QStringLiteral("--folder"), m_rig.folders.transfers(), QStringLiteral("--socket"),
                 m_rig.folders.temporary + QStringLiteral("/s")});
    ASSERT_TRUE(third.waitForFinished());
    EXPECT_EQ(third.exitCode(), 1);
    ASSERT_TRUE(waitUntil([&] { return state(m_rig, first) == ModelState::ready(); }));
    ASSERT_TRUE(waitUntil([&] { return state(m_rig, second) == ModelState::ready(); }));
    m_rig.expectOnlyTheModel();
}

TEST_F(Helper, AProgramsDownloadThatAnotherCancelsIsCancelledInBothAndGoneOnFrom)
{
    auto resident = underWay(m_rig);
    {
        const auto other = m_rig.launch();
        ASSERT_EQ(state(m_rig, other).kind(), Kind::downloading);
        other.manager->cancel(m_rig.model);
        ASSERT_TRUE(waitUntil([&] { return state(m_rig, other) == ModelState::notDownloaded(); }));
    }
    ASSERT_TRUE(waitUntil([&] { return state(m_rig, resident) == ModelState::notDownloaded(); }));
    m_rig.expectInstalled(resident);
    ASSERT_EQ(m_rig.askedFrom().size(), 2);
    EXPECT_GT(m_rig.askedFrom().last(), 0);
}

TEST_F(Helper, WhatAnotherProgramFetchesAndDeletesIsSeenByOneThatHadNothingToDoWithIt)
{
    const auto resident = m_rig.launch();
    auto other = m_rig.launch();
    m_rig.expectInstalled(other);
    ASSERT_TRUE(waitUntil([&] { return state(m_rig, resident) == ModelState::ready(); }));
    ASSERT_TRUE(other.manager->deleteModel(m_rig.model));
    EXPECT_TRUE(waitUntil([&] { return state(m_rig, resident) == ModelState::notDownloaded(); }));
}

TEST_F(Helper, ADeletionInAnotherProgramEndsTheDownload)
{
    auto resident = underWay(m_rig);
    {
        const auto other = m_rig.launch();
        ASSERT_TRUE(other.manager->deleteModel(m_rig.model));
        // It ends at once, as a command does.
    }
    ASSERT_TRUE(waitUntil([&] { return state(m_rig, resident) == ModelState::notDownloaded(); }));
    EXPECT_TRUE(m_rig.waitForNoHelper());
    EXPECT_FALSE(resident.manager->isDownloaded(m_rig.model));
}

TEST_F(Helper, GoesOnWhenTheProgramIsGoneAndIsFoundAgain)
{
    double reached = 0;
    {
        const auto program = underWay(m_rig);
        reached = state(m_rig, program).fraction();
    }
    const test::LogCapture log;
    const auto program = m_rig.launch();
    EXPECT_EQ(state(m_rig, program).kind(), Kind::downloading);
    EXPECT_GE(state(m_rig, program).fraction(), reached);
    EXPECT_TRUE(log.contains(u"Re-attached background download of " + m_rig.model.id));
    ASSERT_TRUE(waitUntil([&] { return state(m_rig, program) == ModelState::ready(); }));
    m_rig.expectOnlyTheModel();
    EXPECT_EQ(m_rig.askedFrom().size(), 1);
}

TEST_F(Helper, WhatFinishedWhileNobodyWasThereIsInstalledAtTheNextStart)
{
    underWay(m_rig).manager.reset();
    ASSERT_TRUE(m_rig.waitForNoHelper());
    EXPECT_EQ(m_rig.partialBytes(), m_rig.body.size());
    int delivered = 0;
    const auto program = m_rig.launch();
    program.manager->setBackgroundEventsCompletionHandler([&delivered] { ++delivered; });
    ASSERT_TRUE(waitUntil([&] { return state(m_rig, program) == ModelState::ready(); }));
    EXPECT_TRUE(waitUntil([&] { return delivered == 1; }));
    m_rig.expectOnlyTheModel();
    EXPECT_EQ(m_rig.askedFrom().size(), 1);
    EXPECT_TRUE(m_rig.waitForNoHelper());
}

TEST_F(Helper, ABadFileThatFinishedWhileNobodyWasThereIsNotInstalled)
{
    m_rig.publish(QByteArray(3'000'000, '<'));
    underWay(m_rig).manager.reset();
    ASSERT_TRUE(m_rig.waitForNoHelper());
    const auto program = m_rig.launch();
    ASSERT_TRUE(waitUntil([&] { return state(m_rig, program).kind() == Kind::failed; }));
    EXPECT_TRUE(waitUntil([&] { return m_rig.files().isEmpty(); }));
}

TEST_F(Helper, KilledItIsStartedAgainAndGoesOn)
{
    const int count = test::soakCount(2, 20);
    for (int i = 0; i < count && !HasFailure(); ++i) {
        DownloadRig rig(TransferKind::detached);
        const double until = 0.05 + 0.8 * QRandomGenerator::global()->generateDouble();
        const auto program = underWay(rig, until);
        const QList<int> helpers = rig.helpers();
        ASSERT_EQ(helpers.size(), 1);
        test::sendSignal(helpers.first(), SIGKILL);
        ASSERT_TRUE(waitUntil([&] { return state(rig, program) == ModelState::ready(); }))
            << qPrintable(state(rig, program).message());
        rig.expectOnlyTheModel();
        ASSERT_EQ(rig.askedFrom().size(), 2);
        EXPECT_GT(rig.askedFrom().last(), 0);
    }
}

TEST_F(Helper, KilledWithNobodyThereItsWorkIsGoneOnWithAtTheNextStart)
{
    underWay(m_rig, 0.2, 2).manager.reset();
    for (const int helper : m_rig.helpers())
        test::sendSignal(helper, SIGKILL);
    ASSERT_TRUE(m_rig.waitForNoHelper());
    const auto program = m_rig.launch();
    EXPECT_EQ(state(m_rig, program).kind(), Kind::downloading);
    ASSERT_TRUE(waitUntil([&] { return state(m_rig, program) == ModelState::ready(); }));
    m_rig.expectOnlyTheModel();
    EXPECT_GT(m_rig.askedFrom().last(), 0);
}

TEST_F(Helper, ToldToEndItLeavesItsWorkToTheNext)
{
    const auto program = underWay(m_rig);
    for (const int helper : m_rig.helpers())
        test::sendSignal(helper, SIGTERM);
    ASSERT_TRUE(waitUntil([&] { return state(m_rig, program) == ModelState::ready(); }));
    m_rig.expectOnlyTheModel();
    EXPECT_GT(m_rig.askedFrom().last(), 0);
}

TEST_F(Helper, ACancelledDownloadStaysCancelled)
{
    {
        const auto program = underWay(m_rig);
        program.manager->cancel(m_rig.model);
        ASSERT_TRUE(waitUntil([&] { return state(m_rig, program) == ModelState::notDownloaded(); }));
    }
    ASSERT_TRUE(m_rig.waitForNoHelper());
    auto program = m_rig.launch();
    EXPECT_EQ(state(m_rig, program), ModelState::notDownloaded());
    EXPECT_TRUE(m_rig.helpers().isEmpty());
    // What had come by then is still of use.
    m_rig.expectInstalled(program);
    EXPECT_GT(m_rig.askedFrom().last(), 0);
}

TEST_F(Helper, ThatIsMissingIsTold)
{
    DetachedTransfers transfers(
        {.helper = QStringLiteral("/nowhere/tulvane-transfers"), .folder = m_rig.folders.transfers()});
    ModelManager manager({.folders = m_rig.folders,
                          .hub = QUrl(QStringLiteral("http://127.0.0.1:9/")),
                          .catalogue = {m_rig.model}},
                         transfers);
    manager.download(m_rig.model);
    ASSERT_TRUE(waitUntil([&] { return manager.state(m_rig.model.id).kind() == Kind::failed; }));
    EXPECT_EQ(manager.state(m_rig.model.id).message(),
              QStringLiteral("Downloads do not work here: /nowhere/tulvane-transfers"));
}

TEST_F(Helper, ThatNeverAnswersIsTold)
{
    DetachedTransfers transfers({.helper = QStringLiteral("/bin/true"),
                                 .folder = m_rig.folders.transfers(),
                                 .startTimeout = std::chrono::milliseconds(200)});
    ModelManager manager({.folders = m_rig.folders,
                          .hub = QUrl(QStringLiteral("http://127.0.0.1:9/")),
                          .catalogue = {m_rig.model}},
                         transfers);
    manager.download(m_rig.model);
    ASSERT_TRUE(waitUntil([&] { return manager.state(m_rig.model.id).kind() == Kind::failed; }));
    EXPECT_EQ(manager.state(m_rig.model.id).message(),
              QStringLiteral("Downloads do not work here: /bin/true"));
}

TEST_F(Helper, EndsWhenAnotherVersionAsksForIt)
{
    m_rig.linger = 60'000;
    const auto program = underWay(m_rig);
    QFile keeper(transfers::TransferFolder(m_rig.folders.transfers()).keeperFile());
    ASSERT_TRUE(keeper.open(QIODevice::ReadOnly));
    const auto newer = transfers::LineSocket::connectTo(QString::fromUtf8(keeper.readAll()));
    ASSERT_NE(newer, nullptr);
    qint64 version = 0;
    QObject::connect(newer.get(), &transfers::LineSocket::received, newer.get(),
                     [&](const QJsonObject& message) { version = message.value(u"version").toInteger(); });
    newer->send({{QStringLiteral("op"), QStringLiteral("hello")}});
    ASSERT_TRUE(waitUntil([&] { return version == transfers::protocolVersion; }));
    const QList<int> before = m_rig.helpers();
    newer->send({{QStringLiteral("op"), QStringLiteral("leave")}});
    // The program that still has a download there starts its own, which goes on.
    ASSERT_TRUE(waitUntil([&] { return state(m_rig, program) == ModelState::ready(); }));
    EXPECT_NE(m_rig.helpers(), before);
    m_rig.expectOnlyTheModel();
}

TEST_F(Helper, NonsenseOnTheSocketHarmsNobody)
{
    const auto program = underWay(m_rig);
    QFile keeper(transfers::TransferFolder(m_rig.folders.transfers()).keeperFile());
    ASSERT_TRUE(keeper.open(QIODevice::ReadOnly));
    const QString address = QString::fromUtf8(keeper.readAll());
    const QList<QJsonObject> messages{
        {},
        {{QStringLiteral("op"), 7}},
        {{QStringLiteral("op"), QStringLiteral("start")}, {QStringLiteral("url"), QStringLiteral("::")}},
        {{QStringLiteral("op"), QStringLiteral("cancel")},
         {QStringLiteral("key"), QStringLiteral("../../x")}},
        {{QStringLiteral("op"), QStringLiteral("taken")}, {QStringLiteral("key"), QStringLiteral("unknown")}},
        {{QStringLiteral("op"), QStringLiteral("tasks")}, {QStringLiteral("tasks"), QJsonArray{1, 2}}}};
    for (const QJsonObject& message : messages) {
        const auto socket = transfers::LineSocket::connectTo(address);
        ASSERT_NE(socket, nullptr);
        socket->send(message);
    }
    ASSERT_TRUE(waitUntil([&] { return state(m_rig, program) == ModelState::ready(); }));
    m_rig.expectOnlyTheModel();
    EXPECT_EQ(m_rig.askedFrom().size(), 1);
}

} // namespace
} // namespace tulvane
