#pragma once

#include <support/TinyModel.h>

#include <QByteArray>
#include <QList>

#include <random>

namespace tulvane::test {

/// Damages sound model files in every way that the author could think of, by a seeded generator.
class ModelMutation final {
public:
    explicit ModelMutation(quint32 seed);

    struct Outcome {
        QByteArray model;
        /// Whether a check of the structure can know that the file is damaged: anything but possible values
        /// in place of weights, filters and words.
        bool isDetectable = true;
    };
    /// The next damaged file; never one that is sound byte by byte.
    [[nodiscard]] Outcome next();

private:
    struct Original {
        QByteArray model;
        QList<PieceOfModel> pieces;
    };

    [[nodiscard]] quint32 below(qint64 bound);
    [[nodiscard]] const PieceOfModel& anyPiece(const Original& original, bool structural);
    [[nodiscard]] QByteArray mutated(const Original& original);
    void flipBits(QByteArray& model, const PieceOfModel& piece);
    void overwriteNumber(QByteArray& model, const PieceOfModel& piece);
    void damageValues(QByteArray& model, const Original& original);
    void damageBlock(QByteArray& model);
    void changeLength(QByteArray& model, const Original& original);
    void moveTensors(QByteArray& model, const Original& original);
    void becomeForeign(QByteArray& model);
    [[nodiscard]] static bool isDetectable(const Original& original, const QByteArray& model);
    [[nodiscard]] static bool isPieceDamaged(const PieceOfModel& piece, const char* now);

    std::mt19937 m_random;
    QList<Original> m_originals;
};

} // namespace tulvane::test
