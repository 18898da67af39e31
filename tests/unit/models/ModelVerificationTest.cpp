#include "ModelFiles.h"

#include <models/ModelVerification.h>

#include <QCryptographicHash>

#include <gtest/gtest.h>

#include <optional>

namespace tulvane {
namespace {

using test::ScratchFolder;
using test::sparseFile;

class ModelVerification : public ::testing::Test {
protected:
    /// The error, or none.
    using Verdict = std::optional<ModelError>;

    [[nodiscard]] static Verdict verdict(const Result<void, ModelError>& result)
    {
        return result ? Verdict() : result.error();
    }
    [[nodiscard]] Verdict verifySize(qint64 size, const WhisperModel& model) const
    {
        return verdict(verifyModelFile(sparseFile(m_folder.file(QStringLiteral("m")), size), model));
    }
    [[nodiscard]] Verdict verifyBytes(const QByteArray& bytes, const WhisperModel& model) const
    {
        return verdict(verifyModelFile(m_folder.write(QStringLiteral("m"), bytes), model));
    }

    ScratchFolder m_folder;
    const std::atomic<bool> m_never = false;
};

std::optional<ModelError> wrongSize(qint64 actual, qint64 expected)
{
    return ModelError::unexpectedSize(actual, expected);
}
const std::optional<ModelError> good;
const std::optional<ModelError> notGGML = ModelError::notAGGMLFile();
const std::optional<ModelError> mismatch = ModelError::checksumMismatch();

TEST_F(ModelVerification, SizesOfTheMediumEntriesEndAt85And115Percent)
{
    for (const WhisperModel& model : WhisperModel::all()) {
        if (model.approximateSizeBytes != 539'000'000)
            continue;
        EXPECT_EQ(verifySize(458'150'000, model), good);
        EXPECT_EQ(verifySize(458'149'999, model), wrongSize(458'149'999, 539'000'000));
        EXPECT_EQ(verifySize(619'850'000, model), good);
        EXPECT_EQ(verifySize(619'850'001, model), wrongSize(619'850'001, 539'000'000));
    }
}

TEST_F(ModelVerification, BoundsAreTruncatedDoubles)
{
    const WhisperModel& full = WhisperModel::all().at(2);
    EXPECT_EQ(verifySize(1'759'499'999, full), good);
    EXPECT_EQ(verifySize(1'759'500'000, full), wrongSize(1'759'500'000, 1'530'000'000));
    const WhisperModel& small = WhisperModel::all().at(0);
    EXPECT_EQ(verifySize(201'249'999, small), good);
    EXPECT_EQ(verifySize(201'250'000, small), wrongSize(201'250'000, 175'000'000));
    EXPECT_EQ(AcceptedSizes::around(175'000'000).least, 148'750'000);
    EXPECT_EQ(AcceptedSizes::around(1'530'000'000).least, 1'300'500'000);
}

TEST_F(ModelVerification, OnlyTheLittleEndianSignatureCounts)
{
    const WhisperModel model = test::tinyModel();
    EXPECT_EQ(verifyBytes(test::tinyBody(), model), good);
    EXPECT_EQ(verifyBytes("ggml" + QByteArray(996, 'x'), model), notGGML);
    EXPECT_EQ(verifyBytes("<!DOCTYPE html>" + QByteArray(985, ' '), model), notGGML);
}

TEST_F(ModelVerification, FilesOfLessThanFourBytesOrNoneAtAllAreNotModels)
{
    const WhisperModel model = test::tinyModel();
    for (int size = 0; size < 4; ++size)
        EXPECT_EQ(verifyBytes(test::ggmlSignature.left(size), model), notGGML) << size;
    EXPECT_EQ(verdict(verifyModelFile(m_folder.file(QStringLiteral("absent")), model)), notGGML);
    EXPECT_EQ(verdict(verifyModelFile(m_folder.path(), model)), notGGML);
}

TEST_F(ModelVerification, TheSignatureIsTestedBeforeTheSize)
{
    EXPECT_EQ(verifyBytes("<html>", test::tinyModel()), notGGML);
    EXPECT_EQ(verifyBytes(test::ggmlSignature, test::tinyModel()), wrongSize(4, 1000));
}

TEST_F(ModelVerification, TheSizeIsTestedBeforeTheChecksum)
{
    WhisperModel model = test::tinyModel();
    model.sha256 = QString(64, u'0');
    EXPECT_EQ(verifyBytes(test::tinyBody(500), model), wrongSize(500, 1000));
    EXPECT_EQ(verifyBytes(test::tinyBody(), model), mismatch);
}

TEST_F(ModelVerification, TheChecksumIsComparedWithoutRegardToItsCase)
{
    WhisperModel model = test::tinyModel();
    const QByteArray digest = QCryptographicHash::hash(test::tinyBody(), QCryptographicHash::Sha256).toHex();
    model.sha256 = QString::fromLatin1(digest);
    EXPECT_EQ(verifyBytes(test::tinyBody(), model), good);
    model.sha256 = QString::fromLatin1(digest).toUpper();
    EXPECT_EQ(verifyBytes(test::tinyBody(), model), good);
    EXPECT_EQ(verifyBytes(test::tinyBody().replace(500, 1, "y"), model), mismatch);
}

TEST_F(ModelVerification, TheChecksumCoversEveryChunk)
{
    constexpr qint64 chunk = 4'194'304;
    for (const qint64 size : {chunk - 1, chunk, chunk + 1, 2 * chunk + 77}) {
        WhisperModel model = test::tinyModel();
        model.approximateSizeBytes = size;
        QByteArray bytes = test::tinyBody(size);
        model.sha256 =
            QString::fromLatin1(QCryptographicHash::hash(bytes, QCryptographicHash::Sha256).toHex());
        EXPECT_EQ(verifyBytes(bytes, model), good) << size;
        bytes[size - 1] = 'y';
        EXPECT_EQ(verifyBytes(bytes, model), mismatch) << size;
    }
}

TEST_F(ModelVerification, AStopEndsTheHashingEarly)
{
    WhisperModel model = test::tinyModel();
    model.sha256 =
        QString::fromLatin1(QCryptographicHash::hash(test::tinyBody(), QCryptographicHash::Sha256).toHex());
    const std::atomic<bool> stop = true;
    const QString file = m_folder.write(QStringLiteral("m"), test::tinyBody());
    EXPECT_EQ(verdict(verifyModelFile(file, model, m_never)), good);
    EXPECT_EQ(verdict(verifyModelFile(file, model, stop)), mismatch);
}

} // namespace
} // namespace tulvane
