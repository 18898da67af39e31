#include <speech/whisper/ModelFile.h>
#include <speech/whisper/ModelFileCheck.h>
#include <support/Paths.h>
#include <support/ScratchFolder.h>
#include <support/TinyModel.h>

#include <QBuffer>
#include <QtEndian>

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <cmath>
#include <limits>

namespace tulvane {
namespace {

using test::Piece;
using test::PieceOfModel;
using test::TinyModel;

Result<ModelFacts, QString> check(QByteArray bytes)
{
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::ReadOnly);
    return checkModelFile(buffer);
}

const QByteArray& tiny()
{
    static const QByteArray model = TinyModel{}.bytes();
    return model;
}

const QList<PieceOfModel>& pieces()
{
    static const QList<PieceOfModel> all = test::piecesOf(tiny());
    return all;
}

PieceOfModel piece(Piece kind, qsizetype which = 0)
{
    for (const PieceOfModel& candidate : pieces()) {
        if (candidate.kind == kind && which-- == 0)
            return candidate;
    }
    qFatal("the model has no such piece");
}

template <class T>
QByteArray with(qint64 offset, T value)
{
    QByteArray model = tiny();
    qToLittleEndian(value, model.data() + offset);
    return model;
}

QString reason(const QByteArray& model)
{
    const auto facts = check(model);
    return facts ? u"sound"_qs : facts.error();
}

// The library's convolution asserts that its weights are F16, and a failed assertion ends the process.
TEST(ModelFileCheck, refusesWeightsThatTheLibraryCannotRun)
{
    const auto facts = check(TinyModel{.fileType = 0}.bytes());
    ASSERT_FALSE(facts.has_value());
    EXPECT_TRUE(facts.error().contains(u"weights of the unknown kind 0"_qs)) << qPrintable(facts.error());
}

// Every shape that Whisper models come in, and every kind of weights that quantizers write.
TEST(ModelFileCheck, acceptsSoundModels)
{
    const TinyModel shapes[] = {
        {},
        {.vocabulary = 51864, .words = 50256},
        {.vocabulary = 51866, .mels = 128, .words = 51866},
        {.audioState = 64,
         .audioHeads = 8,
         .audioLayers = 3,
         .textState = 64,
         .textHeads = 4,
         .textLayers = 2},
        {.audioState = 40, .textState = 40},
        {.audioState = 32, .textState = 32, .fileType = 2002},
        {.audioState = 32, .textState = 32, .fileType = 2003},
        {.audioState = 32, .textState = 32, .fileType = 2007},
        {.audioState = 32, .textState = 32, .fileType = 2008},
        {.audioState = 32, .textState = 32, .fileType = 2009},
        {.audioState = 256, .textState = 256, .fileType = 2010},
        {.audioState = 256, .textState = 256, .fileType = 2011},
        {.audioState = 256, .textState = 256, .fileType = 2012},
        {.audioState = 256, .textState = 256, .fileType = 2013},
        {.audioState = 256, .textState = 256, .fileType = 2014},
    };
    for (const TinyModel& shape : shapes) {
        const QByteArray model = shape.bytes();
        const auto facts = check(model);
        ASSERT_TRUE(facts.has_value()) << shape.fileType << qPrintable(facts.error());
        qint64 weights = 0;
        for (const PieceOfModel& part : test::piecesOf(model))
            weights += part.kind == Piece::tensorData ? part.size : 0;
        EXPECT_EQ(facts->weightBytes, weights);
        EXPECT_EQ(facts->header.vocabulary, shape.vocabulary);
        EXPECT_EQ(facts->header.mels, shape.mels);
        EXPECT_GT(facts->neededMemory(), weights);
        EXPECT_GT(facts->neededAddressSpace(), facts->neededMemory());
    }
}

TEST(ModelFileCheck, acceptsTheDemoModel)
{
    const auto file = openModelFile(test::demoModelPath());
    ASSERT_TRUE(file.has_value());
    const auto facts = checkModelFile(**file);
    EXPECT_TRUE(facts.has_value()) << qPrintable(facts.error());
}

TEST(ModelFileCheck, rejectsForeignContent)
{
    EXPECT_EQ(reason({}), u"ends within its signature");
    EXPECT_EQ(reason("ggm"), u"ends within its signature");
    EXPECT_EQ(reason("GGUF" + tiny().sliced(4)), u"not a ggml model");
    EXPECT_EQ(reason(QByteArray(1'000'000, '\0')), u"not a ggml model");
    EXPECT_EQ(reason("<!DOCTYPE html><html>not found</html>"), u"not a ggml model");
    EXPECT_EQ(reason("version https://git-lfs.github.com/spec/v1\noid sha256:0\n"), u"not a ggml model");
    EXPECT_EQ(reason("lmgg" + QByteArray(1'000'000, '\xff')),
              u"no speech model that can be run: a vocabulary of -1");
}

TEST(ModelFileCheck, rejectsEveryNumberOfTheHeaderThatCannotBe)
{
    // Position in the header, and what must not stand there.
    const std::pair<int, QList<qint32>> wrong[] = {
        {0, {0, -1, 50257, 51863, 51867, 1 << 30}},
        {1, {0, -1, 1, 1499, 1501, 3000}},
        {2, {0, -8, 16, 7, 1 << 20}},
        {3, {0, -1, 2, 3, 16}},
        {4, {0, -1, 2, 33, 1 << 30}},
        {5, {0, -1, 447, 449, 896}},
        {6, {0, -8, 16, 7, 1 << 20}},
        {7, {0, -1, 2, 3, 16}},
        {8, {0, -1, 2, 33, 1 << 30}},
        {9, {0, -1, 79, 128, 1 << 30}},
        {10, {-1, 0, 4, 5, 6, 7, 24, 1001, 2001, 2000, 1007, 3007, 1 << 30, -2147483647 - 1}},
    };
    const qint64 header = piece(Piece::header).offset;
    for (const auto& [index, values] : wrong) {
        for (const qint32 value : values)
            EXPECT_NE(reason(with(header + 4 * index, value)), u"sound") << index << " " << value;
    }
}

TEST(ModelFileCheck, rejectsAWidthThatTheWeightsCannotFill)
{
    EXPECT_TRUE(reason(TinyModel{.audioState = 40, .textState = 40, .fileType = 2007}.bytes())
                    .contains(u"cannot fill"));
    EXPECT_TRUE(reason(TinyModel{.audioState = 128, .textState = 128, .fileType = 2012}.bytes())
                    .contains(u"cannot fill"));
}

TEST(ModelFileCheck, rejectsWidthsThatDiffer)
{
    EXPECT_NE(reason(TinyModel{.audioState = 16, .textState = 8}.bytes()), u"sound");
}

TEST(ModelFileCheck, rejectsBlocksOfAnOlderLayout)
{
    EXPECT_TRUE(reason(TinyModel{.audioState = 32, .textState = 32, .fileType = 1007}.bytes())
                    .contains(u"unknown kind"));
    EXPECT_TRUE(reason(TinyModel{.audioState = 32, .textState = 32, .fileType = 7}.bytes())
                    .contains(u"unknown kind"));
}

TEST(ModelFileCheck, rejectsMelFiltersThatAreNone)
{
    const qint64 sizes = piece(Piece::filterSizes).offset;
    EXPECT_EQ(reason(with(sizes, qint32{-80})), u"mel filters of -80 by 201");
    EXPECT_EQ(reason(with(sizes, qint32{128})), u"mel filters of 128 by 201");
    EXPECT_EQ(reason(with(sizes + 4, qint32{200})), u"mel filters of 80 by 200");
    EXPECT_EQ(reason(with(sizes + 4, qint32{0x7fffffff})), u"mel filters of 80 by 2147483647");
    const PieceOfModel values = piece(Piece::filterValues);
    for (const float value : {std::nanf(""), std::numeric_limits<float>::infinity(), -0.5F, 1.5F, 1e30F}) {
        EXPECT_EQ(reason(with(values.offset, value)), u"a mel filter that is none") << value;
        EXPECT_EQ(reason(with(values.offset + values.size - 4, value)), u"a mel filter that is none")
            << value;
    }
}

TEST(ModelFileCheck, rejectsAVocabularyThatIsNone)
{
    const qint64 count = piece(Piece::wordCount).offset;
    for (const qint32 wrong : {-1, 0, 50255, 51866, 0x7fffffff})
        EXPECT_EQ(reason(with(count, wrong)), u"a vocabulary of %1 words"_qs.arg(wrong));
    EXPECT_NE(reason(with(count, qint32{50256})), u"sound"); // the rest would be taken for a tensor
    EXPECT_NE(reason(with(count, qint32{50258})), u"sound");
    const qint64 length = piece(Piece::wordLength, 300).offset;
    EXPECT_EQ(reason(with(length, quint32{513})), u"a word of 513 bytes");
    EXPECT_EQ(reason(with(length, quint32{0xffffffff})), u"a word of 4294967295 bytes");
    EXPECT_NE(reason(with(length, quint32{512})), u"sound");
    EXPECT_NE(reason(with(length, quint32{0})), u"sound");
}

TEST(ModelFileCheck, rejectsAVocabularyWithoutTheSpace)
{
    EXPECT_EQ(reason(with(piece(Piece::wordBytes, ' ').offset, quint8{'x'})),
              u"a vocabulary without the space");
}

TEST(ModelFileCheck, rejectsTensorsThatAreNotTheExpectedOnes)
{
    const qint64 numbers = piece(Piece::tensorNumbers, 1).offset; // "encoder.conv1.weight"
    const qint64 extents = piece(Piece::tensorExtents, 1).offset;
    for (const qint32 dimensions : {-1, 0, 1, 2, 4, 5, 0x7fffffff})
        EXPECT_NE(reason(with(numbers, dimensions)), u"sound") << dimensions;
    for (const qint32 length : {-1, 0, 19, 21, 64, 0x7fffffff})
        EXPECT_NE(reason(with(numbers + 4, length)), u"sound") << length;
    for (const qint32 type : {-1, 0, 2, 8, 30, 99}) // 30 is as wide as the right one
        EXPECT_NE(reason(with(numbers + 8, type)), u"sound") << type;
    for (const qint32 extent : {-3, 0, 2, 4, 80})
        EXPECT_NE(reason(with(extents, extent)), u"sound") << extent;
    QByteArray swapped = tiny();
    qToLittleEndian(qint32{80}, swapped.data() + extents);
    qToLittleEndian(qint32{3}, swapped.data() + extents + 4);
    EXPECT_TRUE(reason(swapped).contains(u"encoder.conv1.weight with other dimensions"));
    EXPECT_EQ(reason(with(piece(Piece::tensorName, 1).offset, quint8{'E'})),
              u"a tensor that is unknown or there twice");
}

QByteArray tensorBytes(qsizetype which)
{
    const PieceOfModel first = piece(Piece::tensorNumbers, which);
    const PieceOfModel data = piece(Piece::tensorData, which);
    return tiny().sliced(first.offset, data.offset + data.size - first.offset);
}

TEST(ModelFileCheck, wantsEveryTensorOnce)
{
    const QByteArray third = tensorBytes(2);
    QByteArray without = tiny();
    without.remove(piece(Piece::tensorNumbers, 2).offset, third.size());
    EXPECT_EQ(reason(without), u"1 tensors are missing");
    EXPECT_EQ(reason(tiny() + third), u"a tensor that is unknown or there twice");
    EXPECT_EQ(reason(without + third), u"sound"); // in any order
    EXPECT_EQ(reason(without + tensorBytes(3)), u"a tensor that is unknown or there twice");
    const qint64 firstTensor = piece(Piece::tensorNumbers).offset;
    EXPECT_TRUE(reason(tiny().first(firstTensor)).endsWith(u"tensors are missing"));
}

TEST(ModelFileCheck, wantsTheEndWhereItIs)
{
    for (const qsizetype extra : {1, 3, 4, 12, 100, 100'000})
        EXPECT_NE(reason(tiny() + QByteArray(extra, '\0')), u"sound") << extra;
    EXPECT_NE(reason(tiny() + tiny()), u"sound");
    EXPECT_NE(reason(tiny().chopped(1)), u"sound");
}

TEST(ModelFileCheck, noticesWhereverTheFileIsCutOff)
{
    // At and around the borders of every piece but those of the many words; there, of some.
    for (qsizetype i = 0; i < pieces().size(); ++i) {
        const PieceOfModel& part = pieces()[i];
        const bool word = part.kind == Piece::wordBytes || part.kind == Piece::wordLength;
        if (word && i % 5000 > 1)
            continue;
        for (const qint64 end : {part.offset, part.offset + 1, part.offset + part.size - 1}) {
            if (end < 0 || end >= tiny().size())
                continue;
            EXPECT_NE(reason(tiny().first(end)), u"sound") << end;
        }
    }
}

class ModelFileKinds : public ::testing::Test {
protected:
    static bool opens(const QString& path) { return openModelFile(path).has_value(); }
    test::ScratchFolder m_folder;
};

TEST_F(ModelFileKinds, opensAPlainFileAndALinkToOne)
{
    const QString file = m_folder.write(u"model.bin"_qs, "lmgg");
    EXPECT_TRUE(QFile::link(file, m_folder.file(u"link"_qs)));
    EXPECT_TRUE(opens(file));
    EXPECT_TRUE(opens(m_folder.file(u"link"_qs)));
}

TEST_F(ModelFileKinds, opensNothingElseAndDoesNotBlock)
{
    EXPECT_FALSE(opens(QString()));
    EXPECT_FALSE(opens(m_folder.path()));
    EXPECT_FALSE(opens(m_folder.file(u"missing"_qs)));
    EXPECT_FALSE(opens(m_folder.write(u"file"_qs, "x") + u"/below"));
    EXPECT_FALSE(opens(u"/dev/zero"_qs));
    EXPECT_FALSE(opens(u"/dev/null"_qs));
    const QString pipe = m_folder.file(u"pipe"_qs);
    ASSERT_EQ(mkfifo(qPrintable(pipe), 0600), 0);
    EXPECT_FALSE(opens(pipe));
    EXPECT_TRUE(QFile::link(pipe, m_folder.file(u"link"_qs)));
    EXPECT_FALSE(opens(m_folder.file(u"link"_qs)));
    EXPECT_TRUE(QFile::link(m_folder.file(u"missing"_qs), m_folder.file(u"dangling"_qs)));
    EXPECT_FALSE(opens(m_folder.file(u"dangling"_qs)));
}

} // namespace
} // namespace tulvane
