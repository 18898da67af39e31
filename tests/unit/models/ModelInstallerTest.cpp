#include "ModelFiles.h"

#include <models/ModelInstaller.h>
#include <support/Await.h>

#include <QDeadlineTimer>
#include <QDir>
#include <QThread>

#include <gtest/gtest.h>

namespace tulvane {
namespace {

using test::ScratchFolder;

/// Bytes that this process has read so far, whatever from.
qint64 bytesRead()
{
    QFile counts(QStringLiteral("/proc/self/io"));
    if (!counts.open(QIODevice::ReadOnly))
        qFatal("the kernel does not count what is read");
    const QList<QByteArray> words = counts.readAll().simplified().split(' ');
    return words.value(words.indexOf("rchar:") + 1).toLongLong();
}

class ModelInstallerTest : public ::testing::Test {
protected:
    ModelInstallerTest()
        : m_folders{m_scratch.file(QStringLiteral("Models")), m_scratch.file(QStringLiteral("tmp"))}
    {
        QDir().mkpath(m_folders.temporary);
    }

    /// As if a download of the model had just ended; the file is sparse.
    void arrive(const WhisperModel& model)
    {
        const QString file = test::sparseFile(m_scratch.file(model.id), model.approximateSizeBytes);
        auto staged = StagedModel::adopt(m_folders, model.id, file);
        ASSERT_TRUE(staged);
        m_installer.install(model, *std::move(staged));
    }
    [[nodiscard]] bool waitFor(qsizetype count)
    {
        return test::waitUntil([this, count] { return m_done.size() == count; });
    }
    [[nodiscard]] QStringList notes() const
    {
        return QDir(m_folders.models).entryList({QStringLiteral(".*.staging")}, QDir::Files | QDir::Hidden);
    }

    ScratchFolder m_scratch;
    ModelFolders m_folders;
    QStringList m_done;
    ModelInstaller::Outcome m_outcome;
    ModelInstaller m_installer{[this](const WhisperModel& model, const ModelInstaller::Outcome& outcome) {
        m_done.append(model.id);
        m_outcome = outcome;
    }};
};

TEST_F(ModelInstallerTest, WhatComesFirstIsCheckedFirst)
{
    WhisperModel large = test::tinyModel(QStringLiteral("large"));
    large.approximateSizeBytes = 200'000'000;
    large.sha256 = QString(64, u'0');
    arrive(large);
    arrive(test::tinyModel());
    ASSERT_TRUE(waitFor(2));
    EXPECT_EQ(m_done, (QStringList{QStringLiteral("large"), QStringLiteral("tiny")}));
}

TEST_F(ModelInstallerTest, AModelThatComesAgainHasItsNoteAgain)
{
    WhisperModel model = test::tinyModel();
    model.sha256 = QString(64, u'0');
    arrive(model);
    ASSERT_TRUE(waitFor(1));
    EXPECT_EQ(notes(), QStringList());
    // The next one takes long enough for a look at it.
    model.approximateSizeBytes = 200'000'000;
    arrive(model);
    EXPECT_EQ(notes(), QStringList{QStringLiteral(".tiny.staging")})
        << "a program that is killed now leaves a file that is not found again";
    ASSERT_TRUE(waitFor(2));
}

TEST_F(ModelInstallerTest, AModelThatIsDeletedBeforeItsEndIsToldIsAbandoned)
{
    const WhisperModel model = test::tinyModel();
    arrive(model);
    const QString placed = m_folders.models + QStringLiteral("/tiny.bin");
    // Without the event loop, so that the end is not told meanwhile.
    const QDeadlineTimer limit(test::defaultTimeout);
    while (!QFile::exists(placed) && !limit.hasExpired())
        QThread::msleep(1);
    ASSERT_TRUE(QFile::exists(placed));
    m_installer.abandon(model.id);
    ASSERT_TRUE(waitFor(1));
    EXPECT_TRUE(m_outcome.abandoned);
}

TEST_F(ModelInstallerTest, AModelThatIsDeletedDuringItsCheckIsNotPutInPlace)
{
    WhisperModel model = test::tinyModel();
    model.approximateSizeBytes = 200'000'000;
    model.sha256 = QString(64, u'0');
    arrive(model);
    m_installer.abandon(model.id);
    ASSERT_TRUE(waitFor(1));
    EXPECT_TRUE(m_outcome.abandoned);
    EXPECT_FALSE(m_outcome.error);
    EXPECT_EQ(QDir(m_folders.models).entryList(QDir::Files), QStringList());
    m_installer.abandon(model.id); // there is nothing any more
}

TEST_F(ModelInstallerTest, ACheckReadsNoFurtherOnceItsModelIsDeleted)
{
    WhisperModel model = test::tinyModel();
    model.approximateSizeBytes = 2'000'000'000;
    model.sha256 = QString(64, u'0');
    const qint64 before = bytesRead();
    arrive(model);
    // Without the event loop, and without a pause: the check is far faster than that.
    const QDeadlineTimer limit(test::defaultTimeout);
    while (bytesRead() < before + 20'000'000 && !limit.hasExpired())
        QThread::yieldCurrentThread();
    m_installer.abandon(model.id);
    ASSERT_TRUE(waitFor(1));
    EXPECT_TRUE(m_outcome.abandoned);
    const qint64 read = bytesRead() - before;
    EXPECT_GT(read, 20'000'000) << "the check had not begun";
    EXPECT_LT(read, model.approximateSizeBytes);
}

} // namespace
} // namespace tulvane
