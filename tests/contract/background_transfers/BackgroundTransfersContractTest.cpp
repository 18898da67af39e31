#include "Backends.h"

#include <support/Await.h>
#include <support/ScratchFolder.h>

#include <QCoreApplication>
#include <QFile>

#include <gtest/gtest.h>

#include <functional>
#include <map>

namespace tulvane {
namespace {

using test::await;
using test::Behaviour;
using test::TransfersBackend;
using test::waitUntil;
using Kind = TransferError::Kind;

using MakeBackend = std::unique_ptr<TransfersBackend> (*)();
struct Named {
    const char* name;
    MakeBackend make;
};

/// Every event of one transfer.
struct Told {
    QList<qint64> progress;
    qint64 expected = 0;
    QList<int> statuses;
    QByteArray body;
    QString file;
    int completed = 0;
    std::optional<TransferError> error;
    QStringList order;
};

class TransfersContract : public ::testing::TestWithParam<Named> {
protected:
    TransfersContract() : m_backend(GetParam().make()) { transfers().setEvents(events()); }
    ~TransfersContract() override { transfers().setEvents({}); }

    BackgroundTransfers& transfers() { return m_backend->transfers(); }
    [[nodiscard]] static TransferRequest request(const QUrl& url) { return {url, "Tulvane/0", 0}; }
    [[nodiscard]] const Told& waitForEnd(TransferId id)
    {
        EXPECT_TRUE(waitUntil([&] { return m_told[id].completed > 0; }));
        return m_told[id];
    }
    [[nodiscard]] bool waitForBytes(TransferId id, qint64 bytes)
    {
        return waitUntil(
            [&] { return !m_told[id].progress.isEmpty() && m_told[id].progress.last() >= bytes; });
    }

    std::map<TransferId, Told> m_told;
    int m_inCall = 0;
    QString m_moveTo;
    bool m_takes = true;
    std::function<void()> m_onFinished;
    QByteArray m_body = QByteArray(300'000, 'a') + QByteArray(200'000, 'b');

private:
    TransferEvents events()
    {
        return {
            [this](TransferId id, qint64 received, qint64 expected) {
                EXPECT_EQ(m_inCall, 0);
                m_told[id].progress.append(received);
                m_told[id].expected = expected;
                if (m_told[id].order.isEmpty())
                    m_told[id].order.append(QStringLiteral("progress"));
            },
            [this](TransferId id, int status, const QString& file) {
                takeFinished(id, status, file);
                return m_takes;
            },
            [this](TransferId id, const std::optional<TransferError>& error) {
                EXPECT_EQ(m_inCall, 0);
                ++m_told[id].completed;
                m_told[id].error = error;
                m_told[id].order.append(QStringLiteral("completed"));
            },
            {},
        };
    }
    void takeFinished(TransferId id, int status, const QString& path)
    {
        EXPECT_EQ(m_inCall, 0);
        QFile file(path);
        EXPECT_TRUE(file.open(QIODevice::ReadOnly));
        m_told[id].body = file.readAll();
        m_told[id].file = path;
        m_told[id].statuses.append(status);
        m_told[id].order.append(QStringLiteral("finished"));
        if (m_onFinished)
            m_onFinished();
        if (!m_moveTo.isEmpty()) {
            EXPECT_TRUE(QFile::rename(path, m_moveTo));
        }
    }

    std::unique_ptr<TransfersBackend> m_backend;

protected:
    [[nodiscard]] QUrl serve(const QList<Behaviour>& first = {}) { return m_backend->serve(m_body, first); }
    TransferId start(const QUrl& url)
    {
        ++m_inCall;
        const TransferId id = transfers().start(request(url));
        --m_inCall;
        return id;
    }
    TransferId resume(const QByteArray& data)
    {
        ++m_inCall;
        const TransferId id = transfers().resume(data);
        --m_inCall;
        return id;
    }
    void cancel(TransferId id)
    {
        ++m_inCall;
        transfers().cancel(id);
        --m_inCall;
    }
};

TEST_P(TransfersContract, AFileArrivesWholeAndIsGoneAfterTheCall)
{
    const Told& told = waitForEnd(start(serve()));
    EXPECT_EQ(told.body, m_body);
    EXPECT_EQ(told.statuses, QList<int>{200});
    EXPECT_EQ(told.error, std::nullopt);
    EXPECT_EQ(told.order, (QStringList{QStringLiteral("progress"), QStringLiteral("finished"),
                                       QStringLiteral("completed")}));
    EXPECT_EQ(told.progress.last(), m_body.size());
    EXPECT_EQ(told.expected, m_body.size());
    EXPECT_FALSE(QFile::exists(told.file));
}

TEST_P(TransfersContract, AFileThatIsMovedInsideTheCallStays)
{
    const test::ScratchFolder folder;
    m_moveTo = folder.file(QStringLiteral("mine"));
    const Told& told = waitForEnd(start(serve()));
    EXPECT_EQ(told.completed, 1);
    EXPECT_EQ(folder.read(QStringLiteral("mine")), m_body);
}

TEST_P(TransfersContract, AnErrorStatusIsFinishedWithItsAnswer)
{
    const Told& told = waitForEnd(start(serve({{.status = 404}})));
    EXPECT_EQ(told.statuses, QList<int>{404});
    EXPECT_EQ(told.error, std::nullopt);
    EXPECT_FALSE(QFile::exists(told.file));
}

TEST_P(TransfersContract, ALostConnectionLeavesDataToResumeFrom)
{
    const TransferId first = start(serve({{.cutAfter = 200'000}}));
    const Told lost = waitForEnd(first);
    ASSERT_TRUE(lost.error);
    EXPECT_EQ(lost.error->kind(), Kind::connectionLost);
    EXPECT_TRUE(lost.statuses.isEmpty());
    ASSERT_FALSE(lost.error->resumeData().isEmpty());
    const TransferId second = resume(lost.error->resumeData());
    EXPECT_NE(second, first);
    const Told& told = waitForEnd(second);
    EXPECT_EQ(told.error, std::nullopt);
    EXPECT_EQ(told.body, m_body);
}

TEST_P(TransfersContract, WhatALostConnectionLeftServesANewStartToo)
{
    const QUrl url = serve({{.cutAfter = 200'000}});
    EXPECT_TRUE(waitForEnd(start(url)).error);
    EXPECT_EQ(waitForEnd(start(url)).body, m_body);
}

TEST_P(TransfersContract, CancellingLeavesDataToResumeFrom)
{
    const TransferId first = start(serve({{.cutAfter = 200'000, .hold = true}}));
    ASSERT_TRUE(waitForBytes(first, 1));
    cancel(first);
    const Told cancelled = waitForEnd(first);
    ASSERT_TRUE(cancelled.error);
    EXPECT_EQ(cancelled.error->kind(), Kind::cancelled);
    ASSERT_FALSE(cancelled.error->resumeData().isEmpty());
    EXPECT_EQ(waitForEnd(resume(cancelled.error->resumeData())).body, m_body);
}

TEST_P(TransfersContract, StartingAgainRightAfterCancellingWorks)
{
    const QUrl url = serve({{.cutAfter = 200'000, .hold = true}});
    const TransferId first = start(url);
    ASSERT_TRUE(waitForBytes(first, 1));
    cancel(first);
    const TransferId second = start(url);
    EXPECT_NE(second, first);
    EXPECT_EQ(waitForEnd(first).error->kind(), Kind::cancelled);
    EXPECT_EQ(waitForEnd(second).body, m_body);
}

TEST_P(TransfersContract, CancellingTheUnknownDoesNothing)
{
    cancel(4711);
    const TransferId id = start(serve());
    cancel(id + 1);
    EXPECT_EQ(waitForEnd(id).error, std::nullopt);
    EXPECT_FALSE(m_told.contains(4711));
}

TEST_P(TransfersContract, StartingTheSameAddressJoins)
{
    const QUrl url = serve({{.cutAfter = 100'000, .hold = true}});
    const TransferId first = start(url);
    EXPECT_EQ(start(url), first);
    ASSERT_TRUE(waitForBytes(first, 1));
    EXPECT_EQ(start(url), first);
    cancel(first);
    EXPECT_EQ(waitForEnd(first).completed, 1);
}

TEST_P(TransfersContract, IdentifiersAreNotUsedTwice)
{
    const QUrl url = serve();
    const TransferId first = start(url);
    static_cast<void>(waitForEnd(first));
    const TransferId second = start(url);
    EXPECT_NE(second, first);
    EXPECT_EQ(waitForEnd(second).body, m_body);
}

TEST_P(TransfersContract, StartingAgainWhileAFileIsHandedOverIsANewTransfer)
{
    const QUrl url = serve({{.status = 503}});
    TransferId second = 0;
    m_onFinished = [&] {
        if (second == 0)
            second = start(url);
    };
    const TransferId first = start(url);
    EXPECT_EQ(waitForEnd(first).statuses, QList<int>{503});
    EXPECT_NE(second, first);
    EXPECT_EQ(waitForEnd(second).statuses, QList<int>{200});
    EXPECT_EQ(m_told[second].body, m_body);
}

TEST_P(TransfersContract, ResumeDataWithoutSenseIsABadAnswer)
{
    static_cast<void>(serve());
    const Told& told = waitForEnd(resume("nonsense"));
    ASSERT_TRUE(told.error);
    EXPECT_EQ(told.error->kind(), Kind::badAnswer);
}

TEST_P(TransfersContract, TasksAreWhatIsUnderWay)
{
    EXPECT_TRUE(await(transfers().tasks()).isEmpty());
    const QUrl url = serve({{.cutAfter = 100'000, .hold = true}});
    const TransferId id = start(url);
    ASSERT_TRUE(waitForBytes(id, 1));
    const QList<TransferTask> tasks = await(transfers().tasks());
    ASSERT_EQ(tasks.size(), 1);
    EXPECT_EQ(tasks.first().id, id);
    EXPECT_EQ(tasks.first().originalUrl, url);
    EXPECT_GT(tasks.first().received, 0);
    EXPECT_EQ(tasks.first().expected, m_body.size());
    EXPECT_EQ(tasks.first().state, TransferTask::State::running);
    cancel(id);
    static_cast<void>(waitForEnd(id));
    EXPECT_TRUE(await(transfers().tasks()).isEmpty());
}

TEST_P(TransfersContract, TwoTransfersRunSideBySide)
{
    const TransferId held = start(serve({{.cutAfter = 100'000, .hold = true}}));
    const TransferId free = start(serve());
    EXPECT_EQ(waitForEnd(free).body, m_body);
    EXPECT_EQ(m_told[held].completed, 0);
    cancel(held);
    EXPECT_EQ(waitForEnd(held).error->kind(), Kind::cancelled);
}

TEST_P(TransfersContract, WhatATransferLeftIsListedAndCanBeDiscarded)
{
    EXPECT_TRUE(transfers().remnants().isEmpty());
    const QUrl url = serve({{.cutAfter = 200'000}});
    EXPECT_TRUE(waitForEnd(start(url)).error);
    const auto listed = [&] { return transfers().remnants() == QList<TransferRemnant>{{url, 200'000}}; };
    EXPECT_TRUE(waitUntil(listed));
    transfers().discard(url);
    EXPECT_TRUE(waitUntil([&] { return transfers().remnants().isEmpty(); }));
    EXPECT_EQ(waitForEnd(start(url)).body, m_body);
}

TEST_P(TransfersContract, DiscardingEndsATransferAndLeavesNothing)
{
    const QUrl url = serve({{.cutAfter = 200'000, .hold = true}});
    const TransferId id = start(url);
    ASSERT_TRUE(waitForBytes(id, 1));
    transfers().discard(url);
    const Told& told = waitForEnd(id);
    ASSERT_TRUE(told.error);
    EXPECT_EQ(told.error->kind(), Kind::cancelled);
    EXPECT_TRUE(told.error->resumeData().isEmpty());
    EXPECT_TRUE(waitUntil([&] { return transfers().remnants().isEmpty(); }));
}

TEST_P(TransfersContract, DiscardingTheUnknownDoesNothing)
{
    transfers().discard(QUrl(QStringLiteral("https://hub.example/unknown")));
    EXPECT_EQ(waitForEnd(start(serve())).error, std::nullopt);
}

TEST_P(TransfersContract, AFileThatCouldNotBeTakenIsThereForTheNextStart)
{
    const QUrl url = serve();
    m_takes = false;
    EXPECT_EQ(waitForEnd(start(url)).error, std::nullopt);
    m_takes = true;
    const Told& told = waitForEnd(start(url));
    EXPECT_EQ(told.statuses, QList<int>{200});
    EXPECT_EQ(told.body, m_body);
}

TEST_P(TransfersContract, NobodyIsToldAfterTheTellingEnds)
{
    const TransferId id = start(serve());
    transfers().setEvents({});
    ASSERT_TRUE(waitUntil([&] { return await(transfers().tasks()).isEmpty(); }));
    EXPECT_EQ(m_told[id].completed, 0);
    EXPECT_TRUE(m_told[id].statuses.isEmpty());
}

INSTANTIATE_TEST_SUITE_P(Backends, TransfersContract,
                         ::testing::Values(Named{"Fake", &test::makeFakeBackend},
                                           Named{"InProcess", &test::makeInProcessBackend},
                                           Named{"Detached", &test::makeDetachedBackend}),
                         [](const auto& each) { return std::string(each.param.name); });

} // namespace
} // namespace tulvane
