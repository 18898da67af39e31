#include "ManagerFixture.h"

#include <QCoreApplication>
#include <QCryptographicHash>

namespace tulvane {
namespace {

using ErrorKind = TransferError::Kind;

const QByteArray resumeBytes = "resume here";

class ModelManagerDownload : public test::ManagerFixture {
protected:
    [[nodiscard]] QString address() const { return m_model.downloadURL(m_options.hub).toString(); }
    void fail(ErrorKind kind, const QByteArray& resumeData = {})
    {
        m_transfers.tellCompleted(task(), TransferError(kind).withResumeData(resumeData));
    }
};

TEST_F(ModelManagerDownload, StartsOneTransferOfTheModelsAddress)
{
    const test::LogCapture log;
    manager().download(m_model);
    EXPECT_EQ(m_transfers.started, (QList<TransferRequest>{{m_model.downloadURL(m_options.hub),
                                                            ModelManager::userAgent(), test::tinySize}}));
    EXPECT_EQ(state(), State::downloading(0));
    EXPECT_EQ(log.texts("models", QtInfoMsg),
              QStringList{QStringLiteral("Starting download of tiny from ") + address()});
}

TEST_F(ModelManagerDownload, ASecondCallWhileItRunsDoesNothing)
{
    manager().download(m_model);
    manager().download(m_model);
    EXPECT_EQ(m_transfers.started.size(), 1);
}

TEST_F(ModelManagerDownload, AModelThatIsThereIsNotFetched)
{
    test::sparseFile(manager().fileURL(m_model), 1);
    manager().download(m_model);
    EXPECT_TRUE(m_transfers.started.isEmpty());
}

TEST_F(ModelManagerDownload, AModelThatIsBeingCheckedIsNotFetchedAgain)
{
    manager().download(m_model);
    m_transfers.tellFinished(task(), 200, test::tinyBody());
    m_transfers.tellCompleted(task());
    ASSERT_EQ(state(), State::verifying());
    manager().download(m_model);
    EXPECT_EQ(m_transfers.started.size(), 1);
}

TEST_F(ModelManagerDownload, TwoModelsAreFetchedSideBySide)
{
    manager().download(m_model);
    const TransferId first = task();
    manager().download(m_other);
    m_transfers.tellProgress(first, 100, 1000);
    m_transfers.tellProgress(task(), 900, 1000);
    EXPECT_EQ(state(), State::downloading(0.1));
    EXPECT_EQ(manager().state(m_other.id), State::downloading(0.9));
}

TEST_F(ModelManagerDownload, TheFractionIsOfTheExpectedElseOfTheCataloguesSize)
{
    manager().download(m_model);
    m_transfers.tellProgress(task(), 300, 1200);
    EXPECT_EQ(state(), State::downloading(0.25));
    m_transfers.tellProgress(task(), 300, -1);
    EXPECT_EQ(state(), State::downloading(0.3));
    m_transfers.tellProgress(task(), 400, 0);
    EXPECT_EQ(state(), State::downloading(0.4));
    m_transfers.tellProgress(task(), 5000, 1200);
    EXPECT_EQ(state(), State::downloading(1));
}

TEST_F(ModelManagerDownload, WithoutAnySizeTheFractionIsZero)
{
    m_model.approximateSizeBytes = 0;
    m_options.catalogue = {m_model};
    manager().download(m_model);
    m_transfers.tellProgress(task(), 300, -1);
    EXPECT_EQ(state(), State::downloading(0));
}

TEST_F(ModelManagerDownload, UnknownTasksAreIgnored)
{
    manager();
    m_transfers.tellProgress(99, 1, 2);
    m_transfers.tellFinished(99, 200, test::tinyBody());
    m_transfers.tellCompleted(99, TransferError(ErrorKind::connectionLost));
    EXPECT_EQ(state(), State::notDownloaded());
    EXPECT_TRUE(modelsFolder().isEmpty());
    EXPECT_TRUE(temporaryFolder().isEmpty());
}

TEST_F(ModelManagerDownload, AFinishedFileIsCheckedAndInstalled)
{
    const test::LogCapture log;
    manager().download(m_model);
    m_transfers.tellFinished(task(), 200, test::tinyBody());
    EXPECT_EQ(state(), State::verifying());
    m_transfers.tellCompleted(task());
    ASSERT_TRUE(waitForState(Kind::ready));
    EXPECT_EQ(modelsFolder(), QStringList{QStringLiteral("tiny.bin")});
    EXPECT_TRUE(temporaryFolder().isEmpty());
    EXPECT_FALSE(QFile::exists(m_transfers.lastFile()));
    EXPECT_EQ(log.texts("models", QtInfoMsg).constLast(),
              QStringLiteral("Model tiny ready at ") + manager().fileURL(m_model));
}

TEST_F(ModelManagerDownload, EveryStatusFrom200To299IsAFile)
{
    for (const int status : {200, 206, 299}) {
        manager().download(m_model);
        m_transfers.tellFinished(task(), status, test::tinyBody());
        m_transfers.tellCompleted(task());
        ASSERT_TRUE(waitForState(Kind::ready)) << status;
        ASSERT_TRUE(manager().deleteModel(m_model));
    }
}

TEST_F(ModelManagerDownload, AnyOtherStatusFailsAndLeavesNoFile)
{
    for (const int status : {199, 300, 403, 404, 503}) {
        manager().download(m_model);
        m_transfers.tellFinished(task(), status, "<html>Not found</html>");
        EXPECT_FALSE(QFile::exists(m_transfers.lastFile()));
        m_transfers.tellCompleted(task());
        EXPECT_EQ(state(), State::failed(QStringLiteral("The server responded with HTTP %1.").arg(status)));
        EXPECT_TRUE(modelsFolder().isEmpty());
        EXPECT_TRUE(temporaryFolder().isEmpty());
    }
}

TEST_F(ModelManagerDownload, APageInTheFilesPlaceIsNotAModel)
{
    const test::LogCapture log;
    manager().download(m_model);
    m_transfers.tellFinished(task(), 200, "<html>Please log in</html>");
    m_transfers.tellCompleted(task());
    ASSERT_TRUE(waitForState(Kind::failed));
    const QString text = QStringLiteral(
        "The downloaded file is not a ggml model. The Hugging Face repo may not provide this file.");
    EXPECT_EQ(state(), State::failed(text));
    EXPECT_EQ(log.texts("models", QtCriticalMsg),
              QStringList{QStringLiteral("Model tiny verification failed: ") + text});
    EXPECT_TRUE(modelsFolder().isEmpty());
    EXPECT_TRUE(temporaryFolder().isEmpty());
}

TEST_F(ModelManagerDownload, AFileOfTheWrongSizeIsTold)
{
    manager().download(m_model);
    m_transfers.tellFinished(task(), 200, test::tinyBody(1151));
    ASSERT_TRUE(waitForState(Kind::failed));
    EXPECT_EQ(state().message(),
              QStringLiteral("Downloaded 1 KB, expected about 1 KB. The download may be incomplete."));
}

TEST_F(ModelManagerDownload, AChecksumIsEnforcedWhereThereIsOne)
{
    m_model.sha256 =
        QString::fromLatin1(QCryptographicHash::hash(test::tinyBody(), QCryptographicHash::Sha256).toHex());
    m_options.catalogue = {m_model};
    manager().download(m_model);
    m_transfers.tellFinished(task(), 200, test::tinyBody().replace(10, 1, "!"));
    m_transfers.tellCompleted(task());
    ASSERT_TRUE(waitForState(Kind::failed));
    EXPECT_EQ(state().message(),
              QStringLiteral("The downloaded file failed its checksum. Please try again."));
    install();
}

TEST_F(ModelManagerDownload, ATransferErrorIsShownAndLogged)
{
    const test::LogCapture log;
    manager().download(m_model);
    fail(ErrorKind::connectionLost);
    EXPECT_EQ(state(), State::failed(QStringLiteral("The connection was lost.")));
    EXPECT_EQ(log.texts("models", QtCriticalMsg),
              QStringList{QStringLiteral("Download of tiny failed: The connection was lost.")});
}

TEST_F(ModelManagerDownload, AfterAnErrorTheNextDownloadResumesOnce)
{
    manager().download(m_model);
    fail(ErrorKind::connectionLost, resumeBytes);
    const test::LogCapture log;
    manager().download(m_model);
    EXPECT_EQ(m_transfers.resumed, QList<QByteArray>{resumeBytes});
    EXPECT_EQ(log.texts("models", QtInfoMsg), QStringList{QStringLiteral("Resuming download of tiny")});
    EXPECT_EQ(state(), State::downloading(0));
    // The data is gone even though resuming fails.
    fail(ErrorKind::badAnswer);
    manager().download(m_model);
    EXPECT_EQ(m_transfers.resumed.size(), 1);
    EXPECT_EQ(m_transfers.started.size(), 2);
}

TEST_F(ModelManagerDownload, CancellingGoesBackAndKeepsTheResumeData)
{
    const test::LogCapture log;
    manager().download(m_model);
    manager().cancel(m_model);
    EXPECT_EQ(m_transfers.cancelled, QList<TransferId>{task()});
    EXPECT_EQ(state(), State::downloading(0));
    fail(ErrorKind::cancelled, resumeBytes);
    EXPECT_EQ(state(), State::notDownloaded());
    EXPECT_TRUE(log.texts("models", QtCriticalMsg).isEmpty());
    manager().download(m_model);
    EXPECT_EQ(m_transfers.resumed, QList<QByteArray>{resumeBytes});
}

TEST_F(ModelManagerDownload, CancellingWhatDoesNotRunDoesNothing)
{
    manager().cancel(m_model);
    EXPECT_TRUE(m_transfers.cancelled.isEmpty());
    install();
    manager().cancel(m_model);
    EXPECT_TRUE(m_transfers.cancelled.isEmpty());
}

TEST_F(ModelManagerDownload, AnEndedTaskIsForgotten)
{
    manager().download(m_model);
    const TransferId old = task();
    fail(ErrorKind::timedOut);
    m_transfers.tellProgress(old, 500, 1000);
    EXPECT_EQ(state().kind(), Kind::failed);
}

TEST_F(ModelManagerDownload, OrdinaryModeTakesNothingUp)
{
    m_transfers.setTasks({{7, QUrl(address()), 500, 1000, TransferTask::State::running}});
    EXPECT_TRUE(manager().isAttached());
    EXPECT_EQ(m_transfers.timesAsked(), 0);
    EXPECT_EQ(state(), State::notDownloaded());
}

class ModelManagerReattach : public ModelManagerDownload {
protected:
    ModelManagerReattach() { m_options.mode = ModelManager::SessionMode::background; }
    void attach()
    {
        ASSERT_TRUE(test::waitUntil([this] { return manager().isAttached(); }));
    }
};

TEST_F(ModelManagerReattach, RunningAndSuspendedTransfersAreTakenUp)
{
    const test::LogCapture log;
    m_transfers.setTasks({{7, QUrl(address()), 500, 1000, TransferTask::State::running},
                          {8, m_other.downloadURL(m_options.hub), 100, 0, TransferTask::State::suspended}});
    attach();
    EXPECT_EQ(state(), State::downloading(0.5));
    EXPECT_EQ(manager().state(m_other.id), State::downloading(0.1));
    EXPECT_EQ(log.texts("models", QtInfoMsg),
              (QStringList{QStringLiteral("Re-attached background download of tiny"),
                           QStringLiteral("Re-attached background download of other")}));
    m_transfers.tellProgress(7, 600, 1000);
    EXPECT_EQ(state(), State::downloading(0.6));
    manager().cancel(m_model);
    EXPECT_EQ(m_transfers.cancelled, QList<TransferId>{7});
    manager().download(m_model);
    EXPECT_TRUE(m_transfers.started.isEmpty());
    m_transfers.tellFinished(7, 200, test::tinyBody());
    m_transfers.tellCompleted(7);
    EXPECT_TRUE(waitForState(Kind::ready));
}

TEST_F(ModelManagerReattach, OtherTaskStatesAndForeignAddressesAreSkipped)
{
    m_transfers.setTasks(
        {{7, QUrl(address()), 500, 1000, TransferTask::State::cancelling},
         {8, m_other.downloadURL(m_options.hub), 1, 2, TransferTask::State::completed},
         {9, QUrl(QStringLiteral("https://hub.example/else")), 1, 2, TransferTask::State::running}});
    attach();
    EXPECT_EQ(state(), State::notDownloaded());
    EXPECT_EQ(manager().state(m_other.id), State::notDownloaded());
}

TEST_F(ModelManagerReattach, IsToldWhenItIsDone)
{
    m_transfers.holdTasks();
    int told = 0;
    QObject::connect(&manager(), &ModelManager::attached, &manager(), [&told] { ++told; });
    QCoreApplication::processEvents();
    EXPECT_FALSE(manager().isAttached());
    m_transfers.answerTasks();
    attach();
    EXPECT_EQ(told, 1);
}

TEST_F(ModelManagerReattach, AnAnswerThatComesAfterTheEndIsHarmless)
{
    m_transfers.holdTasks();
    manager();
    m_manager.reset();
    m_transfers.setTasks({{7, QUrl(address()), 500, 1000, TransferTask::State::running}});
    m_transfers.answerTasks();
    QCoreApplication::processEvents();
    m_transfers.tellProgress(7, 1, 2);
    EXPECT_EQ(m_manager, nullptr);
}

TEST_F(ModelManagerReattach, TheCompletionHandlerIsCalledOnceAndCleared)
{
    attach();
    int called = 0;
    manager().setBackgroundEventsCompletionHandler([&called] { ++called; });
    m_transfers.tellEventsDelivered();
    m_transfers.tellEventsDelivered();
    EXPECT_EQ(called, 1);
}

} // namespace
} // namespace tulvane
