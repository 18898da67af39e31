#include "ModelMutation.h"

#include <support/Paths.h>

#include <QFile>
#include <QtEndian>

#include <algorithm>
#include <cstring>
#include <limits>

namespace tulvane::test {

namespace {

QByteArray demoModel()
{
    QFile file(test::demoModelPath());
    if (!file.open(QIODevice::ReadOnly))
        qFatal("the demo model is missing");
    return file.readAll();
}

bool isStructural(Piece kind)
{
    return kind != Piece::tensorData && kind != Piece::wordBytes && kind != Piece::filterValues;
}

qint32 numberAt(const char* bytes, int index)
{
    return qFromLittleEndian<qint32>(bytes + 4 * index);
}

/// Other numbers of heads that divide the width as well as the true ones do.
bool onlyHeadsChangedToPossibleOnes(const char* before, const char* now)
{
    for (int i = 0; i < 11; ++i) {
        const bool heads = i == 3 || i == 7;
        const qint32 width = numberAt(now, i - (heads ? 1 : 0));
        const qint32 value = numberAt(now, i);
        if (!heads && value != numberAt(before, i))
            return false;
        if (heads && (value < 1 || width % value != 0 || width / value % 8 != 0))
            return false;
    }
    return true;
}

} // namespace

ModelMutation::ModelMutation(quint32 seed) : m_random(seed)
{
    const QByteArray models[] = {
        TinyModel{}.bytes(),
        TinyModel{.audioState = 64, .audioHeads = 4, .audioLayers = 2, .textState = 64, .textHeads = 8}
            .bytes(),
        TinyModel{.vocabulary = 51864, .fileType = 0, .words = 50256}.bytes(),
        TinyModel{.vocabulary = 51866, .textLayers = 3, .mels = 128}.bytes(),
        TinyModel{.audioState = 32, .textState = 32, .fileType = 2008}.bytes(),
        demoModel(),
    };
    for (const QByteArray& model : models)
        m_originals.append({model, piecesOf(model)});
}

quint32 ModelMutation::below(qint64 bound)
{
    return static_cast<quint32>(m_random() % static_cast<quint64>(std::max<qint64>(1, bound)));
}

ModelMutation::Outcome ModelMutation::next()
{
    // The demo model is large, and the quantized one slow to run: less often.
    const bool rare = below(20) == 0;
    const Original& original = m_originals[rare ? m_originals.size() - 1 - below(2) : below(4)];
    QByteArray model = mutated(original);
    while (model == original.model)
        model = mutated(original);
    return {model, isDetectable(original, model)};
}

QByteArray ModelMutation::mutated(const Original& original)
{
    QByteArray model = original.model;
    // In fiftieths. The few that no check can know of are the dear ones: the library is tried on them.
    const quint32 kind = below(50);
    if (kind < 2)
        damageValues(model, original);
    else if (kind < 4)
        damageBlock(model);
    else if (kind < 6)
        becomeForeign(model);
    else if (kind < 14)
        changeLength(model, original);
    else if (kind < 20)
        moveTensors(model, original);
    else if (kind < 32)
        flipBits(model, anyPiece(original, true));
    else
        overwriteNumber(model, anyPiece(original, true));
    return model;
}

/// Each kind of piece as often as any other, though there are fifty thousand words.
const PieceOfModel& ModelMutation::anyPiece(const Original& original, bool structural)
{
    for (;;) {
        const auto kind = static_cast<Piece>(below(static_cast<int>(Piece::tensorData) + 1));
        const qsizetype start = below(original.pieces.size());
        for (qsizetype i = 0; i < original.pieces.size(); ++i) {
            const PieceOfModel& piece = original.pieces[(start + i) % original.pieces.size()];
            if (piece.kind == kind && piece.size > 0 && isStructural(kind) == structural)
                return piece;
        }
    }
}

void ModelMutation::flipBits(QByteArray& model, const PieceOfModel& piece)
{
    for (quint32 count = 1 + below(3); count > 0; --count) {
        char& byte = model.data()[piece.offset + below(piece.size)];
        byte = static_cast<char>(byte ^ static_cast<char>(1U << below(8)));
    }
}

void ModelMutation::overwriteNumber(QByteArray& model, const PieceOfModel& piece)
{
    const qint64 offset = piece.offset + 4 * below(piece.size / 4);
    const qint32 old = qFromLittleEndian<qint32>(model.constData() + offset);
    const qint32 values[] = {0,
                             -1,
                             1,
                             std::numeric_limits<qint32>::max(),
                             std::numeric_limits<qint32>::min(),
                             static_cast<qint32>(static_cast<quint32>(old) + 1),
                             static_cast<qint32>(static_cast<quint32>(old) - 1),
                             static_cast<qint32>(static_cast<quint32>(old) * 2),
                             static_cast<qint32>(below(1000)),
                             static_cast<qint32>(m_random())};
    qToLittleEndian(values[below(std::size(values))], model.data() + offset);
}

void ModelMutation::damageValues(QByteArray& model, const Original& original)
{
    const PieceOfModel& piece = anyPiece(original, false);
    if (piece.kind == Piece::filterValues) {
        const float values[] = {0.5F,
                                1.0F,
                                -1.0F,
                                2.0F,
                                std::numeric_limits<float>::quiet_NaN(),
                                std::numeric_limits<float>::infinity()};
        qToLittleEndian(values[below(std::size(values))],
                        model.data() + piece.offset + 4 * below(piece.size / 4));
        return;
    }
    const bool all = below(4) == 0;
    const bool wild = below(2) == 0; // exponents of all ones: what is no number
    for (qint64 i = 0; i < piece.size; ++i) {
        if (all || below(piece.size) < 8)
            model.data()[piece.offset + i] = wild ? '\xff' : static_cast<char>(m_random());
    }
}

/// What a bad disk or a lost packet leaves: a block of zeros, of noise, or of some other place.
void ModelMutation::damageBlock(QByteArray& model)
{
    const qint64 size = std::min<qint64>(qint64{1} << (4 + below(13)), model.size() / 2);
    char* const block = model.data() + below(model.size() - size);
    const quint32 kind = below(3);
    if (kind == 0)
        std::memset(block, 0, static_cast<std::size_t>(size));
    else if (kind == 1)
        std::generate(block, block + size, [this] { return static_cast<char>(m_random()); });
    else
        std::memmove(block, model.constData() + below(model.size() - size), static_cast<std::size_t>(size));
}

void ModelMutation::changeLength(QByteArray& model, const Original& original)
{
    const PieceOfModel& piece = below(2) == 0 ? anyPiece(original, true) : original.pieces.last();
    const qint64 at = piece.offset + below(piece.size + 1);
    const qint64 amount = 1 + below(below(2) == 0 ? 16 : 100'000);
    switch (below(5)) {
    case 0:
        model.truncate(at);
        break;
    case 1:
        model.truncate(below(model.size()));
        break;
    case 2:
        model.append(QByteArray(amount, static_cast<char>(m_random())));
        break;
    case 3:
        model.insert(at, QByteArray(amount, static_cast<char>(m_random())));
        break;
    default:
        model.remove(std::min<qint64>(at, model.size() - 1), amount);
    }
}

void ModelMutation::moveTensors(QByteArray& model, const Original& original)
{
    QList<qsizetype> tensors;
    for (qsizetype i = 0; i < original.pieces.size(); ++i) {
        if (original.pieces[i].kind == Piece::tensorNumbers)
            tensors.append(i);
    }
    const auto whole = [&](qsizetype which) {
        const PieceOfModel& first = original.pieces[tensors[which]];
        const PieceOfModel& data = original.pieces[tensors[which] + 3];
        return original.model.sliced(first.offset, data.offset + data.size - first.offset);
    };
    const qsizetype one = below(tensors.size());
    const qsizetype other = below(tensors.size());
    const PieceOfModel& extents = original.pieces[tensors[one] + 1];
    switch (below(4)) {
    case 0: // twice
        model.insert(original.pieces[tensors[other]].offset, whole(one));
        break;
    case 1: // not at all
        model.remove(original.pieces[tensors[one]].offset, whole(one).size());
        break;
    case 2: // one in place of another
        model.replace(original.pieces[tensors[one]].offset, whole(one).size(), whole(other));
        break;
    default: // sideways
        std::reverse(reinterpret_cast<quint32*>(model.data() + extents.offset),
                     reinterpret_cast<quint32*>(model.data() + extents.offset + extents.size));
    }
}

void ModelMutation::becomeForeign(QByteArray& model)
{
    const QByteArray beginnings[] = {"GGUF",
                                     "lmgg",
                                     "\x7f"
                                     "ELF",
                                     "PK\x03\x04",
                                     "<!DOCTYPE html>",
                                     "RIFF",
                                     "version 1\n",
                                     ""};
    const QByteArray beginning = beginnings[below(std::size(beginnings))];
    if (below(2) == 0) {
        model.replace(0, std::max<qsizetype>(4, beginning.size()), beginning);
        return;
    }
    QByteArray noise(below(200'000), Qt::Uninitialized);
    std::generate(noise.begin(), noise.end(), [this] { return static_cast<char>(m_random()); });
    model = beginning + noise;
}

bool ModelMutation::isDetectable(const Original& original, const QByteArray& model)
{
    if (model.size() != original.model.size())
        return true;
    bool hasSpace = false;
    for (const PieceOfModel& piece : original.pieces) {
        const char* const before = original.model.constData() + piece.offset;
        const char* const now = model.constData() + piece.offset;
        hasSpace = hasSpace || (piece.kind == Piece::wordBytes && piece.size == 1 && *now == ' ');
        if (std::memcmp(before, now, static_cast<std::size_t>(piece.size)) == 0)
            continue;
        if (piece.kind == Piece::header ? !onlyHeadsChangedToPossibleOnes(before, now)
                                        : isPieceDamaged(piece, now))
            return true;
    }
    return !hasSpace;
}

/// Of a piece that has changed: whether what now stands there cannot stand there in any model.
bool ModelMutation::isPieceDamaged(const PieceOfModel& piece, const char* now)
{
    if (isStructural(piece.kind))
        return true;
    if (piece.kind != Piece::filterValues)
        return false;
    for (qint64 i = 0; i < piece.size; i += 4) {
        const auto value = qFromLittleEndian<float>(now + i);
        if (!(value >= 0.0F && value <= 1.0F))
            return true;
    }
    return false;
}

} // namespace tulvane::test
