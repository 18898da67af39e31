#include "ManagerFixture.h"

#include <models/StagedModel.h>

#include <QCoreApplication>

#include <unistd.h>

#include <cstdlib>
#include <utility>

namespace tulvane {
namespace {

using test::waitUntil;

class ModelManagerStates : public test::ManagerFixture {};

TEST_F(ModelManagerStates, CreationMakesTheFolderAndReadsTheStates)
{
    QDir().mkpath(m_options.folders.models);
    test::sparseFile(m_options.folders.modelFile(m_other.id), 1);
    EXPECT_EQ(manager().state(m_model.id), State::notDownloaded());
    EXPECT_EQ(manager().state(m_other.id), State::ready());
    EXPECT_EQ(manager().states().size(), 2);
    EXPECT_EQ(manager().modelsDirectory(), m_options.folders.models);
}

TEST_F(ModelManagerStates, CreationMakesTheFolderWithItsParents)
{
    EXPECT_FALSE(QFileInfo::exists(m_scratch.file(QStringLiteral("Tulvane"))));
    manager();
    EXPECT_TRUE(QFileInfo(m_options.folders.models).isDir());
}

TEST_F(ModelManagerStates, AFolderThatCannotBeMadeIsReportedWhenTheMoveFails)
{
    m_scratch.write(QStringLiteral("Tulvane"), "in the way");
    const test::LogCapture log;
    manager().download(m_model);
    m_transfers.tellFinished(task(), 200, test::tinyBody());
    ASSERT_TRUE(waitForState(Kind::failed));
    EXPECT_FALSE(state().message().isEmpty());
    EXPECT_EQ(log.texts("models", QtCriticalMsg),
              QStringList{QStringLiteral("Model tiny verification failed: ") + state().message()});
    EXPECT_TRUE(temporaryFolder().isEmpty());
}

TEST_F(ModelManagerStates, TheStandardFoldersAreUnderTheUsersData)
{
    const ModelFolders folders = ModelFolders::standard();
    EXPECT_TRUE(folders.models.endsWith(QStringLiteral("/Tulvane/Models")));
    EXPECT_EQ(folders.temporary, QDir::tempPath());
    EXPECT_TRUE(folders.transfers().endsWith(QStringLiteral("/Tulvane/Downloads")));
}

TEST_F(ModelManagerStates, AModelsFileIsItsIdentifierWithBin)
{
    EXPECT_EQ(manager().fileURL(WhisperModel::fallback()),
              m_options.folders.models + QStringLiteral("/nb-whisper-medium-q5_0.bin"));
}

TEST_F(ModelManagerStates, RefreshLooksAtTheDisk)
{
    manager();
    const QString file = test::sparseFile(manager().fileURL(m_model), 1);
    EXPECT_TRUE(manager().isDownloaded(m_model));
    manager().refreshStates();
    EXPECT_EQ(state(), State::ready());
    QFile::remove(file);
    EXPECT_FALSE(manager().isDownloaded(m_model));
    manager().refreshStates();
    EXPECT_EQ(state(), State::notDownloaded());
}

TEST_F(ModelManagerStates, RefreshForgetsAFailureAndLeavesWhatIsUnderWay)
{
    manager().download(m_model);
    m_transfers.tellProgress(task(), 250, 1000);
    manager().refreshStates();
    EXPECT_EQ(state(), State::downloading(0.25));
    m_transfers.tellCompleted(task(), TransferError(TransferError::Kind::connectionLost));
    EXPECT_EQ(state().kind(), Kind::failed);
    manager().refreshStates();
    EXPECT_EQ(state(), State::notDownloaded());
    manager().download(m_model);
    m_transfers.tellFinished(task(), 200, test::tinyBody());
    EXPECT_EQ(state(), State::verifying());
    manager().refreshStates();
    EXPECT_EQ(state(), State::verifying());
}

TEST_F(ModelManagerStates, AFileThatComesOrGoesBesidesIsNoticed)
{
    manager();
    const QString file = test::sparseFile(manager().fileURL(m_model), 1);
    EXPECT_TRUE(waitForState(Kind::ready));
    QFile::remove(file);
    EXPECT_TRUE(waitForState(Kind::notDownloaded));
}

TEST_F(ModelManagerStates, EveryChangeIsPublishedOnce)
{
    QList<std::pair<QString, ModelState>> seen;
    QObject::connect(&manager(), &ModelManager::stateChanged, &manager(),
                     [&seen](const QString& id, const ModelState& change) { seen.append({id, change}); });
    manager().download(m_model);
    m_transfers.tellProgress(task(), 500, 1000);
    m_transfers.tellProgress(task(), 500, 1000);
    EXPECT_EQ(seen, (QList<std::pair<QString, ModelState>>{{m_model.id, State::downloading(0)},
                                                           {m_model.id, State::downloading(0.5)}}));
}

TEST_F(ModelManagerStates, DeletingRemovesTheFileAndItsCompanion)
{
    install();
    const QString encoder = m_options.folders.models + QStringLiteral("/tiny-encoder.mlmodelc");
    QDir().mkpath(encoder + QStringLiteral("/weights"));
    test::sparseFile(encoder + QStringLiteral("/weights/w"), 3);
    test::sparseFile(manager().fileURL(m_other), 1);
    ASSERT_TRUE(manager().deleteModel(m_model));
    EXPECT_EQ(state(), State::notDownloaded());
    EXPECT_FALSE(QFileInfo::exists(encoder));
    EXPECT_EQ(modelsFolder(), QStringList{QStringLiteral("other.bin")});
}

TEST_F(ModelManagerStates, DeletingWhatIsNotThereIsNoError)
{
    EXPECT_TRUE(manager().deleteModel(m_model));
    EXPECT_EQ(state(), State::notDownloaded());
}

/// Root may remove anything, so for a while this is somebody else.
class AsNobody final {
public:
    AsNobody() : m_isRoot(::geteuid() == 0)
    {
        constexpr uid_t nobody = 65534;
        if (m_isRoot && ::seteuid(nobody) != 0)
            std::abort();
    }
    AsNobody(const AsNobody&) = delete;
    AsNobody& operator=(const AsNobody&) = delete;
    ~AsNobody()
    {
        if (m_isRoot && ::seteuid(0) != 0)
            std::abort();
    }

private:
    bool m_isRoot;
};

TEST_F(ModelManagerStates, AFailedDeletionIsPassedOnAndLeavesTheState)
{
    install();
    constexpr auto readable =
        QFileDevice::ReadOwner | QFileDevice::ExeOwner | QFileDevice::ReadOther | QFileDevice::ExeOther;
    for (const QString& folder :
         {m_scratch.path(), m_scratch.file(QStringLiteral("Tulvane")), m_options.folders.models})
        ASSERT_TRUE(QFile::setPermissions(folder, readable));
    {
        const AsNobody somebodyElse;
        const auto deleted = manager().deleteModel(m_model);
        ASSERT_FALSE(deleted);
        EXPECT_EQ(deleted.error().kind(), ModelError::Kind::fileSystem);
        EXPECT_TRUE(deleted.error().description().contains(m_options.folders.modelFile(m_model.id)));
    }
    EXPECT_EQ(state(), State::ready());
    for (const QString& folder :
         {m_scratch.path(), m_scratch.file(QStringLiteral("Tulvane")), m_options.folders.models})
        ASSERT_TRUE(QFile::setPermissions(folder, readable | QFileDevice::WriteOwner));
}

TEST_F(ModelManagerStates, AFolderThatCannotBeDeletedTellsTheSystemsReason)
{
    const QString encoder = m_options.folders.encoder(m_model.id);
    QDir().mkpath(encoder);
    test::sparseFile(encoder + QStringLiteral("/weights"), 3);
    constexpr auto readable = QFileDevice::ReadOwner | QFileDevice::ExeOwner | QFileDevice::ReadOther |
                              QFileDevice::ExeOther | QFileDevice::ReadGroup | QFileDevice::ExeGroup;
    const QStringList folders{m_scratch.path(), m_scratch.file(QStringLiteral("Tulvane")),
                              m_options.folders.models, encoder};
    static_cast<void>(manager());
    for (const QString& folder : folders)
        ASSERT_TRUE(QFile::setPermissions(folder, readable));
    {
        const AsNobody somebodyElse;
        const auto deleted = manager().deleteModel(m_model);
        ASSERT_FALSE(deleted);
        const QString reason = encoder + QStringLiteral(": Permission denied");
        EXPECT_EQ(deleted.error().description().toStdString(), reason.toStdString());
    }
    for (const QString& folder : folders)
        ASSERT_TRUE(QFile::setPermissions(folder, readable | QFileDevice::WriteOwner));
}

TEST_F(ModelManagerStates, DeletingTakesWhatADownloadHasLeft)
{
    const QUrl url = m_model.downloadURL(m_options.hub);
    manager().download(m_model);
    m_transfers.tellCompleted(task(),
                              TransferError(TransferError::Kind::connectionLost).withResumeData("data"));
    ASSERT_TRUE(manager().deleteModel(m_model));
    EXPECT_EQ(m_transfers.discarded, QList<QUrl>{url});
    manager().download(m_model);
    EXPECT_TRUE(m_transfers.resumed.isEmpty());
}

TEST_F(ModelManagerStates, WhatDownloadsLeftIsCountedAndCanBeFreed)
{
    const QUrl foreign(QStringLiteral("https://elsewhere.example/old-model"));
    EXPECT_EQ(manager().leftoverBytes(), 0);
    m_transfers.left = {{m_model.downloadURL(m_options.hub), 700}, {foreign, 1'900'000'000}};
    EXPECT_EQ(manager().leftoverBytes(), 1'900'000'700);
    manager().freeLeftovers();
    EXPECT_EQ(manager().leftoverBytes(), 0);
    EXPECT_EQ(m_transfers.discarded, (QList<QUrl>{m_model.downloadURL(m_options.hub), foreign}));
}

TEST_F(ModelManagerStates, AFileThatCouldNotBeStagedIsLeftToTheTransfers)
{
    manager().download(m_model);
    QDir(m_options.folders.temporary).removeRecursively();
    QDir(m_options.folders.models).removeRecursively();
    // Where a folder is wanted, a file stands.
    test::sparseFile(m_options.folders.models, 1);
    m_transfers.tellFinished(task(), 200, test::tinyBody());
    EXPECT_FALSE(m_transfers.wasTaken());
    m_transfers.tellCompleted(task());
    EXPECT_EQ(state().kind(), Kind::failed);
    QFile::remove(m_options.folders.models);
}

TEST_F(ModelManagerStates, DeletingDuringADownloadCancelsIt)
{
    manager().download(m_model);
    m_transfers.tellProgress(task(), 100, 1000);
    ASSERT_TRUE(manager().deleteModel(m_model));
    EXPECT_EQ(m_transfers.cancelled, QList<TransferId>{task()});
    EXPECT_EQ(state(), State::notDownloaded());
    m_transfers.tellProgress(task(), 200, 1000);
    EXPECT_EQ(state(), State::notDownloaded());
    m_transfers.tellCompleted(task(), TransferError(TransferError::Kind::cancelled));
    EXPECT_EQ(state(), State::notDownloaded());
}

TEST_F(ModelManagerStates, AFileThatFinishesInSpiteOfADeletionIsNotInstalled)
{
    manager().download(m_model);
    ASSERT_TRUE(manager().deleteModel(m_model));
    m_transfers.tellFinished(task(), 200, test::tinyBody());
    m_transfers.tellCompleted(task());
    EXPECT_EQ(state(), State::notDownloaded());
    EXPECT_TRUE(modelsFolder().isEmpty());
}

TEST_F(ModelManagerStates, DeletingDuringTheCheckKeepsTheFileFromComing)
{
    manager().download(m_model);
    m_transfers.tellFinished(task(), 200, test::tinyBody());
    ASSERT_EQ(state(), State::verifying());
    ASSERT_TRUE(manager().deleteModel(m_model));
    m_transfers.tellCompleted(task());
    EXPECT_EQ(state(), State::notDownloaded());
    ASSERT_TRUE(waitUntil([&] { return modelsFolder().isEmpty() && temporaryFolder().isEmpty(); }));
    QCoreApplication::processEvents();
    EXPECT_EQ(state(), State::notDownloaded());
    EXPECT_TRUE(modelsFolder().isEmpty());
}

TEST_F(ModelManagerStates, ADownloadStartedAfterADeletionSurvivesTheOldOnesEnd)
{
    manager().download(m_model);
    const TransferId old = task();
    ASSERT_TRUE(manager().deleteModel(m_model));
    manager().download(m_model);
    ASSERT_NE(task(), old);
    m_transfers.tellCompleted(old, TransferError(TransferError::Kind::cancelled));
    EXPECT_EQ(state(), State::downloading(0));
    manager().cancel(m_model);
    EXPECT_EQ(m_transfers.cancelled.constLast(), task());
}

TEST_F(ModelManagerStates, AnUncheckedFileOfAnEarlierProgramIsCheckedAndInstalled)
{
    QDir().mkpath(m_options.folders.models);
    ASSERT_TRUE(StagedModel::adopt(m_options.folders, m_model.id,
                                   m_scratch.write(QStringLiteral("arrived"), test::tinyBody())));
    EXPECT_EQ(state(), State::verifying());
    EXPECT_TRUE(waitForState(Kind::ready));
    EXPECT_EQ(modelsFolder(), QStringList{QStringLiteral("tiny.bin")});
}

TEST_F(ModelManagerStates, ABadFileOfAnEarlierProgramIsRemoved)
{
    QDir().mkpath(m_options.folders.models);
    ASSERT_TRUE(StagedModel::adopt(m_options.folders, m_model.id,
                                   m_scratch.write(QStringLiteral("arrived"), "<html>")));
    manager();
    EXPECT_TRUE(waitForState(Kind::failed));
    EXPECT_TRUE(modelsFolder().isEmpty());
    EXPECT_TRUE(temporaryFolder().isEmpty());
}

TEST_F(ModelManagerStates, ACheckInAnotherProgramIsFollowed)
{
    auto theirs = StagedModel::adopt(m_options.folders, m_model.id,
                                     m_scratch.write(QStringLiteral("arrived"), test::tinyBody()));
    ASSERT_TRUE(theirs);
    EXPECT_EQ(state(), State::verifying());
    ASSERT_TRUE((*theirs)->place());
    EXPECT_TRUE(waitForState(Kind::ready));
}

TEST_F(ModelManagerStates, ACheckInAnotherProgramThatDiesIsTakenOver)
{
    auto theirs = StagedModel::adopt(m_options.folders, m_model.id,
                                     m_scratch.write(QStringLiteral("arrived"), test::tinyBody()));
    ASSERT_TRUE(theirs);
    EXPECT_EQ(state(), State::verifying());
    theirs->reset();
    EXPECT_TRUE(waitForState(Kind::ready));
}

TEST_F(ModelManagerStates, WhatAnotherProgramIsCheckingIsNotFetchedASecondTime)
{
    EXPECT_EQ(state(), State::notDownloaded());
    auto theirs = StagedModel::adopt(m_options.folders, m_model.id,
                                     m_scratch.write(QStringLiteral("arrived"), test::tinyBody()));
    ASSERT_TRUE(theirs);
    manager().download(m_model);
    EXPECT_EQ(state(), State::verifying());
    EXPECT_TRUE(m_transfers.started.isEmpty());
    ASSERT_TRUE((*theirs)->place());
    EXPECT_TRUE(waitForState(Kind::ready));
}

TEST_F(ModelManagerStates, ADownloadThatAnotherProgramTookIsFollowedToItsEnd)
{
    manager().download(m_model);
    auto theirs = StagedModel::adopt(m_options.folders, m_model.id,
                                     m_scratch.write(QStringLiteral("arrived"), test::tinyBody()));
    ASSERT_TRUE(theirs);
    m_transfers.tellCompleted(task());
    EXPECT_EQ(state(), State::verifying());
    (*theirs)->discard();
    EXPECT_TRUE(waitForState(Kind::notDownloaded));
}

TEST_F(ModelManagerStates, EndingTheProgramDuringACheckKeepsTheFileForTheNext)
{
    manager().download(m_model);
    m_transfers.tellFinished(task(), 200, test::tinyBody());
    m_manager.reset();
    EXPECT_TRUE(waitForState(Kind::ready));
    EXPECT_EQ(modelsFolder(), QStringList{QStringLiteral("tiny.bin")});
    EXPECT_TRUE(temporaryFolder().isEmpty());
}

TEST_F(ModelManagerStates, TheUserAgentIsTheNameAndTheVersion)
{
    const QString before = QCoreApplication::applicationVersion();
    QCoreApplication::setApplicationVersion(QStringLiteral("1.2.3"));
    EXPECT_EQ(ModelManager::userAgent(), "Tulvane/1.2.3");
    QCoreApplication::setApplicationVersion(QString());
    EXPECT_EQ(ModelManager::userAgent(), "Tulvane/0");
    QCoreApplication::setApplicationVersion(before);
}

} // namespace
} // namespace tulvane
