#include "ModelFiles.h"

#include <models/ModelInstaller.h>
#include <support/Await.h>

#include <QDir>

#include <gtest/gtest.h>

namespace tulvane {
namespace {

using test::ScratchFolder;

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
    ModelInstaller m_installer{
        [this](const WhisperModel& model, const ModelInstaller::Outcome&) { m_done.append(model.id); }};
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

} // namespace
} // namespace tulvane
