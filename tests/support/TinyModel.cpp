#include <support/TinyModel.h>

#include <QFile>
#include <QFloat16>
#include <QHash>
#include <QtEndian>

#include <algorithm>
#include <array>
#include <random>

namespace tulvane::test {

namespace {

/// Bytes of a block and values in it, by the type's number in the file.
struct Block {
    qint64 bytes;
    qint64 values;
};
const QHash<qint32, Block> blocks = {{0, {4, 1}},      {1, {2, 1}},      {2, {18, 32}},    {3, {20, 32}},
                                     {6, {22, 32}},    {7, {24, 32}},    {8, {34, 32}},    {10, {84, 256}},
                                     {11, {110, 256}}, {12, {144, 256}}, {13, {176, 256}}, {14, {210, 256}}};
// From the file's kind of weights to the type of each large tensor.
const QHash<qint32, qint32> typeOfKind = {{0, 0}, {1, 1},   {2, 2},   {3, 3},   {7, 8},   {8, 6},
                                          {9, 7}, {10, 10}, {11, 11}, {12, 12}, {13, 13}, {14, 14}};

constexpr qint32 bins = 201;

/// Writes one model, to memory or to a file.
class Writer final {
public:
    using Put = std::function<void(const QByteArray&)>;
    using PutWeights = std::function<void(qint32 type, qint64 bytes)>;

    Writer(const TinyModel& shape, Put put, PutWeights putWeights)
        : m_shape(shape),
          m_put(std::move(put)),
          m_putWeights(std::move(putWeights)),
          m_large(typeOfKind.value(shape.fileType % 1000, 1))
    {
    }

    void write()
    {
        m_put(numbers({0x67676d6c, m_shape.vocabulary, m_shape.audioContext, m_shape.audioState,
                       m_shape.audioHeads, m_shape.audioLayers, m_shape.textContext, m_shape.textState,
                       m_shape.textHeads, m_shape.textLayers, m_shape.mels, m_shape.fileType}));
        writeFilters();
        writeWords();
        writeEncoder();
        writeDecoder();
    }

private:
    static QByteArray numbers(const std::vector<qint32>& values)
    {
        QByteArray bytes(static_cast<qsizetype>(values.size() * sizeof(qint32)), Qt::Uninitialized);
        for (std::size_t i = 0; i < values.size(); ++i)
            qToLittleEndian(values[i], bytes.data() + i * sizeof(qint32));
        return bytes;
    }
    void writeFilters()
    {
        std::vector<float> filters(static_cast<std::size_t>(m_shape.mels * bins));
        for (std::size_t i = 0; i < filters.size(); ++i)
            filters[i] = i % 7 == 0 ? 0.02F : 0.0F;
        m_put(numbers({m_shape.mels, bins}));
        m_put(QByteArray(reinterpret_cast<const char*>(filters.data()),
                         static_cast<qsizetype>(filters.size() * sizeof(float))));
    }
    void writeWords()
    {
        QByteArray words = numbers({m_shape.words});
        for (qint32 i = 0; i < m_shape.words; ++i) {
            // All single bytes, as every vocabulary has them; then a few words; then nothing.
            QByteArray word;
            if (i < 256)
                word = QByteArray(1, static_cast<char>(i));
            else if (i < 1000)
                word = " w" + QByteArray::number(i);
            words += numbers({static_cast<qint32>(word.size())}) + word;
        }
        m_put(words);
    }
    void tensor(const QByteArray& name, const std::vector<qint32>& extents, qint32 type)
    {
        QByteArray head =
            numbers({static_cast<qint32>(extents.size()), static_cast<qint32>(name.size()), type});
        m_put(head + numbers(extents) + name);
        qint64 values = 1;
        for (const qint32 extent : extents)
            values *= extent;
        m_putWeights(type, values / blocks[type].values * blocks[type].bytes);
    }
    void pair(const QByteArray& name, qint32 from, qint32 to)
    {
        tensor(name + ".weight", {from, to}, m_large);
        tensor(name + ".bias", {to}, 0);
    }
    void norm(const QByteArray& name, qint32 width)
    {
        tensor(name + ".weight", {width}, 0);
        tensor(name + ".bias", {width}, 0);
    }
    void attention(const QByteArray& name, qint32 width)
    {
        norm(name + "_ln", width);
        pair(name + ".query", width, width);
        tensor(name + ".key.weight", {width, width}, m_large);
        pair(name + ".value", width, width);
        pair(name + ".out", width, width);
    }
    void block(const QByteArray& name, qint32 width, bool decodes)
    {
        attention(name + ".attn", width);
        if (decodes)
            attention(name + ".cross_attn", width);
        norm(name + ".mlp_ln", width);
        pair(name + ".mlp.0", width, 4 * width);
        pair(name + ".mlp.2", 4 * width, width);
    }
    void writeEncoder()
    {
        const qint32 width = m_shape.audioState;
        const qint32 convolution = m_large == 0 ? 0 : 1;
        tensor("encoder.positional_embedding", {width, m_shape.audioContext}, 0);
        tensor("encoder.conv1.weight", {3, m_shape.mels, width}, convolution);
        tensor("encoder.conv1.bias", {1, width}, 0);
        tensor("encoder.conv2.weight", {3, width, width}, convolution);
        tensor("encoder.conv2.bias", {1, width}, 0);
        for (qint32 i = 0; i < m_shape.audioLayers; ++i)
            block("encoder.blocks." + QByteArray::number(i), width, false);
        norm("encoder.ln_post", width);
    }
    void writeDecoder()
    {
        const qint32 width = m_shape.textState;
        tensor("decoder.positional_embedding", {width, m_shape.textContext}, 0);
        tensor("decoder.token_embedding.weight", {width, m_shape.vocabulary}, m_large);
        for (qint32 i = 0; i < m_shape.textLayers; ++i)
            block("decoder.blocks." + QByteArray::number(i), width, true);
        norm("decoder.ln", width);
    }

    const TinyModel& m_shape;
    Put m_put;
    PutWeights m_putWeights;
    qint32 m_large;
};

/// Sets one value of a table of numbers.
void setValue(QByteArray& weights, qint32 type, qint64 index, float value)
{
    if (type == 0)
        qToLittleEndian(value, weights.data() + 4 * index);
    else
        qToLittleEndian(qfloat16(value), weights.data() + 2 * index);
}

/// The decoder's last norm gives 1 in its first place, whatever comes in; so the first number of a word's row
/// is the word's weight. The end is the likeliest, and, where it may not stand yet, the one word.
void makeItBrief(const TinyModel& shape, QByteArray& file)
{
    constexpr qint64 oneWord = 300;
    const qint64 end = shape.vocabulary > 51864 ? 50257 : 50256;
    const qint32 type = shape.fileType;
    if (type > 1)
        return;
    QByteArray name;
    for (const PieceOfModel& piece : piecesOf(file)) {
        if (piece.kind == Piece::tensorName)
            name = file.sliced(piece.offset, piece.size);
        if (piece.kind != Piece::tensorData)
            continue;
        QByteArray weights = file.sliced(piece.offset, piece.size);
        if (name == "decoder.ln.weight")
            setValue(weights, 0, 0, 0.0F);
        else if (name == "decoder.ln.bias")
            setValue(weights, 0, 0, 1.0F);
        else if (name == "decoder.token_embedding.weight") {
            setValue(weights, type, oneWord * shape.textState, 40.0F);
            setValue(weights, type, end * shape.textState, 60.0F);
        }
        file.replace(piece.offset, piece.size, weights);
    }
}

QByteArray randomWeights(qint32 type, qint64 bytes, std::mt19937& random)
{
    std::uniform_real_distribution<float> small(-0.1F, 0.1F);
    QByteArray weights(bytes, '\0');
    if (type == 0) {
        for (qint64 i = 0; i < bytes; i += 4)
            qToLittleEndian(small(random), weights.data() + i);
    } else if (type == 1) {
        for (qint64 i = 0; i < bytes; i += 2)
            qToLittleEndian(qfloat16(small(random)), weights.data() + i);
    }
    return weights;
}

} // namespace

QByteArray TinyModel::bytes() const
{
    QByteArray file;
    std::mt19937 random(seed);
    Writer(
        *this, [&](const QByteArray& piece) { file += piece; },
        [&](qint32 type, qint64 size) { file += randomWeights(type, size, random); })
        .write();
    makeItBrief(*this, file);
    return file;
}

void TinyModel::writeSparse(const QString& path) const
{
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly))
        qFatal("could not write %s", qPrintable(path));
    Writer(
        *this, [&](const QByteArray& piece) { file.write(piece); },
        [&](qint32 /*type*/, qint64 size) { file.seek(file.pos() + size); })
        .write();
    file.resize(file.pos());
}

QList<PieceOfModel> piecesOf(const QByteArray& model)
{
    QList<PieceOfModel> pieces;
    qint64 offset = 0;
    const auto take = [&](Piece kind, qint64 size) {
        pieces.append({kind, offset, size});
        offset += size;
        return model.constData() + offset - size;
    };
    const auto number = [](const char* at) { return qFromLittleEndian<qint32>(at); };

    take(Piece::signature, 4);
    take(Piece::header, 44);
    const char* const sizes = take(Piece::filterSizes, 8);
    take(Piece::filterValues, qint64{4} * number(sizes) * number(sizes + 4));
    const qint32 words = number(take(Piece::wordCount, 4));
    for (qint32 i = 0; i < words; ++i) {
        const qint32 length = number(take(Piece::wordLength, 4));
        take(Piece::wordBytes, length);
    }
    while (offset < model.size()) {
        const char* const numbers = take(Piece::tensorNumbers, 12);
        const char* const extents = take(Piece::tensorExtents, qint64{4} * number(numbers));
        qint64 values = 1;
        for (qint32 i = 0; i < number(numbers); ++i)
            values *= number(extents + 4 * i);
        take(Piece::tensorName, number(numbers + 4));
        const Block block = blocks.value(number(numbers + 8), {1, 1});
        take(Piece::tensorData, values / block.values * block.bytes);
    }
    return pieces;
}

} // namespace tulvane::test
