#include "ModelFiles.h"

#include <models/StagedModel.h>

#include <QCoreApplication>
#include <QDateTime>
#include <QRegularExpression>
#include <QStorageInfo>

#include <gtest/gtest.h>

namespace tulvane {
namespace {

using Found = StagedModel::Found;
using test::ScratchFolder;

const QString id = QStringLiteral("tiny");

class Staged : public ::testing::Test {
protected:
    Staged() : m_folders{m_scratch.file(QStringLiteral("Models")), m_scratch.file(QStringLiteral("tmp"))}
    {
        QDir().mkpath(m_folders.temporary);
    }
    [[nodiscard]] QString arrived() const
    {
        return m_scratch.write(QStringLiteral("arrived"), test::tinyBody());
    }
    [[nodiscard]] std::unique_ptr<StagedModel> adopt() const
    {
        auto staged = StagedModel::adopt(m_folders, id, arrived());
        EXPECT_TRUE(staged);
        return staged ? *std::move(staged) : nullptr;
    }
    [[nodiscard]] QStringList inModels() const { return namesIn(m_folders.models); }
    [[nodiscard]] static QStringList namesIn(const QString& folder)
    {
        return QDir(folder).entryList(QDir::Files | QDir::Hidden, QDir::Name);
    }

    ScratchFolder m_scratch;
    ModelFolders m_folders;
};

TEST_F(Staged, AnArrivedFileIsMovedToTheTemporaryFolderUnderANewName)
{
    const auto staged = adopt();
    EXPECT_FALSE(QFile::exists(m_scratch.file(QStringLiteral("arrived"))));
    const QRegularExpression name(QStringLiteral("/tmp/tulvane-[0-9A-F-]{36}\\.bin$"));
    EXPECT_TRUE(name.match(staged->file()).hasMatch()) << qPrintable(staged->file());
    const QString first = staged->file();
    staged->discard();
    EXPECT_NE(adopt()->file(), first);
}

TEST_F(Staged, ALockFileThatNobodyHoldsLocksNothing)
{
    QDir().mkpath(m_folders.models);
    const QString path = m_folders.models + u"/." + id + u".lock";
    for (const QByteArray& left : {QByteArray(), QByteArray("garbage"), QByteArray("1\ninit\nhere\n")}) {
        (void)m_scratch.write(QStringLiteral("Models/.tiny.lock"), left);
        ASSERT_TRUE(QFile::exists(path));
        EXPECT_EQ(StagedModel::find(m_folders, id), Found::none) << left.constData();
    }
    (void)m_scratch.write(QStringLiteral("Models/.tiny.lock"), "x");
    ASSERT_TRUE(QFile::setPermissions(path, {}));
    EXPECT_EQ(StagedModel::find(m_folders, id), Found::none);
}

TEST_F(Staged, PlacingReplacesTheModelAndLeavesNothingElse)
{
    QDir().mkpath(m_folders.models);
    test::sparseFile(m_folders.modelFile(id), 7);
    const auto staged = adopt();
    ASSERT_TRUE(staged->place());
    EXPECT_EQ(QFileInfo(m_folders.modelFile(id)).size(), test::tinySize);
    EXPECT_EQ(inModels(), QStringList{QStringLiteral("tiny.bin")});
    EXPECT_TRUE(namesIn(m_folders.temporary).isEmpty());
}

TEST_F(Staged, DiscardingLeavesNothing)
{
    const auto staged = adopt();
    staged->discard();
    EXPECT_TRUE(inModels().isEmpty());
    EXPECT_TRUE(namesIn(m_folders.temporary).isEmpty());
}

TEST_F(Staged, WhatWasLeftIsFoundAndTakenOver)
{
    EXPECT_EQ(StagedModel::find(m_folders, id), Found::none);
    adopt().reset();
    EXPECT_EQ(StagedModel::find(m_folders, id), Found::waiting);
    EXPECT_EQ(StagedModel::find(m_folders, QStringLiteral("other")), Found::none);
    const auto recovered = StagedModel::recover(m_folders, id);
    ASSERT_NE(recovered, nullptr);
    ASSERT_TRUE(recovered->place());
    EXPECT_EQ(inModels(), QStringList{QStringLiteral("tiny.bin")});
    EXPECT_EQ(StagedModel::recover(m_folders, id), nullptr);
}

TEST_F(Staged, WhatSomebodyIsAtIsNotTakenOver)
{
    const auto staged = adopt();
    EXPECT_EQ(StagedModel::find(m_folders, id), Found::otherProgram);
    EXPECT_EQ(StagedModel::recover(m_folders, id), nullptr);
    EXPECT_TRUE(staged->place());
}

TEST_F(Staged, ALockThatNoProgramHoldsIsVoidWhateverItSays)
{
    const QString lock = m_folders.models + u"/.tiny.lock";
    // Made by this process, on another machine: were it read, it would be believed.
    const QByteArray foreign =
        QByteArray::number(QCoreApplication::applicationPid()) + "\ntulvane\nelsewhere\n";
    for (const QByteArray& text : {QByteArray(), QByteArray("garbage"), QByteArray(5000, 'x'), foreign}) {
        QDir().mkpath(m_folders.models);
        QFile file(lock);
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(text);
        ASSERT_TRUE(file.flush());
        ASSERT_TRUE(
            file.setFileTime(QDateTime::currentDateTime().addSecs(-2), QFileDevice::FileModificationTime));
        file.close();
        EXPECT_EQ(StagedModel::find(m_folders, id), Found::none) << text.constData();
        ASSERT_TRUE(adopt()->place());
        QFile::remove(m_folders.modelFile(id));
    }
}

TEST_F(Staged, ALockWithoutANoteIsAnotherPrograms)
{
    const auto staged = adopt();
    ASSERT_TRUE(QFile::remove(m_folders.models + u"/.tiny.staging"));
    EXPECT_EQ(StagedModel::find(m_folders, id), Found::otherProgram);
}

TEST_F(Staged, ALockThatCannotBeMadeIsHeldByNoProgram)
{
    adopt().reset();
    // Where the lock is wanted, a folder stands.
    ASSERT_TRUE(QDir(m_folders.models).mkdir(QStringLiteral(".tiny.lock")));
    EXPECT_EQ(StagedModel::find(m_folders, id), Found::waiting);
    EXPECT_EQ(StagedModel::recover(m_folders, id), nullptr);
}

TEST_F(Staged, TheNoteNamesTheFileWhereverItWaits)
{
    const auto noted = [this] { return m_scratch.read(QStringLiteral("Models/.tiny.staging")); };
    auto staged = adopt();
    EXPECT_EQ(noted(), staged->file().toUtf8());
    staged->discard();
    QDir(m_folders.temporary).removeRecursively();
    staged = adopt();
    EXPECT_EQ(QFileInfo(staged->file()).path(), m_folders.models);
    EXPECT_EQ(noted(), staged->file().toUtf8());
}

TEST_F(Staged, ANoteWithoutItsFileIsForgotten)
{
    auto staged = adopt();
    QFile::remove(staged->file());
    staged.reset();
    EXPECT_EQ(StagedModel::recover(m_folders, id), nullptr);
    EXPECT_TRUE(inModels().isEmpty());
}

TEST_F(Staged, ANoteThatNamesAForeignFileDoesNotTouchIt)
{
    QDir().mkpath(m_folders.models);
    const QString precious = m_scratch.write(QStringLiteral("precious.bin"), "mine");
    QFile note(m_folders.models + u"/.tiny.staging");
    ASSERT_TRUE(note.open(QIODevice::WriteOnly));
    note.write(precious.toUtf8());
    note.close();
    EXPECT_EQ(StagedModel::recover(m_folders, id), nullptr);
    EXPECT_EQ(m_scratch.read(QStringLiteral("precious.bin")), "mine");
    EXPECT_TRUE(inModels().isEmpty());
}

TEST_F(Staged, WithoutATemporaryFolderItWaitsBesideTheModels)
{
    QDir(m_folders.temporary).removeRecursively();
    const auto staged = adopt();
    EXPECT_EQ(QFileInfo(staged->file()).path(), m_folders.models);
    ASSERT_TRUE(staged->place());
    EXPECT_EQ(inModels(), QStringList{QStringLiteral("tiny.bin")});
}

TEST_F(Staged, AFileThatIsGoneIsAnErrorThatLeavesNothing)
{
    const auto staged = StagedModel::adopt(m_folders, id, m_scratch.file(QStringLiteral("absent")));
    ASSERT_FALSE(staged);
    EXPECT_EQ(staged.error().kind(), ModelError::Kind::fileSystem);
    EXPECT_TRUE(inModels().isEmpty());
}

TEST_F(Staged, PlacingWhereAFolderStandsIsAnError)
{
    QDir().mkpath(m_folders.modelFile(id) + QStringLiteral("/full"));
    const auto staged = adopt();
    EXPECT_FALSE(staged->place());
    EXPECT_TRUE(QFile::exists(staged->file()));
}

class StagedElsewhere : public Staged {
protected:
    void SetUp() override
    {
        const QStorageInfo other(QStringLiteral("/dev/shm"));
        if (!other.isValid() || other.device() == QStorageInfo(m_scratch.path()).device() ||
            !m_other.isValid())
            GTEST_SKIP() << "needs a second file system at /dev/shm";
    }
    QTemporaryDir m_other{QStringLiteral("/dev/shm/tulvane-test-XXXXXX")};
};

TEST_F(StagedElsewhere, WhereTheTemporaryFolderIsOnAnotherFileSystemNothingIsCopied)
{
    m_folders.temporary = m_other.path();
    const auto staged = adopt();
    EXPECT_EQ(QFileInfo(staged->file()).path(), m_folders.models);
    EXPECT_TRUE(namesIn(m_other.path()).isEmpty());
    ASSERT_TRUE(staged->place());
    EXPECT_EQ(inModels(), QStringList{QStringLiteral("tiny.bin")});
}

TEST_F(StagedElsewhere, WhereOnlyTheModelsAreElsewhereTheLastStepStagesBesideThem)
{
    m_folders.models = m_other.filePath(QStringLiteral("Models"));
    const auto staged = adopt();
    EXPECT_EQ(QFileInfo(staged->file()).path(), m_folders.temporary);
    ASSERT_TRUE(staged->place());
    EXPECT_EQ(QFileInfo(m_folders.modelFile(id)).size(), test::tinySize);
    EXPECT_EQ(inModels(), QStringList{QStringLiteral("tiny.bin")});
    EXPECT_TRUE(namesIn(m_folders.temporary).isEmpty());
}

TEST_F(StagedElsewhere, AFileThatCannotBeMovedStaysWhereItIs)
{
    const QString arrived = m_other.filePath(QStringLiteral("arrived"));
    test::sparseFile(arrived, test::tinySize);
    EXPECT_FALSE(StagedModel::adopt(m_folders, id, arrived));
    EXPECT_EQ(QFileInfo(arrived).size(), test::tinySize);
    EXPECT_TRUE(inModels().isEmpty());
}

TEST_F(StagedElsewhere, PartialDownloadsLieOnTheModelsDisk)
{
    m_folders.models = m_scratch.file(QStringLiteral("data/Models"));
    EXPECT_EQ(m_folders.transfers(), m_scratch.file(QStringLiteral("data/Downloads")));
    QDir().mkpath(m_scratch.file(QStringLiteral("data")));
    ASSERT_TRUE(QFile::link(m_other.path(), m_folders.models));
    EXPECT_EQ(m_folders.transfers(), m_folders.models + u"/.downloads");
}

TEST_F(StagedElsewhere, ACopyThatWasCutShortIsDroppedWhenTheFileIsTakenOver)
{
    m_folders.models = m_other.filePath(QStringLiteral("Models"));
    const QString name = QFileInfo(adopt()->file()).fileName();
    test::sparseFile(m_folders.models + u'/' + name, 5);
    const auto recovered = StagedModel::recover(m_folders, id);
    ASSERT_NE(recovered, nullptr);
    EXPECT_FALSE(QFile::exists(m_folders.models + u'/' + name));
    ASSERT_TRUE(recovered->place());
    EXPECT_EQ(QFileInfo(m_folders.modelFile(id)).size(), test::tinySize);
}

} // namespace
} // namespace tulvane
