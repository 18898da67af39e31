#pragma once

#include <models/WhisperModel.h>
#include <support/ScratchFolder.h>

#include <QFile>

namespace tulvane::test {

inline const QByteArray ggmlSignature = QByteArray::fromHex("6c6d6767");

/// A sparse file: the given beginning, and zeros up to the size.
inline QString sparseFile(const QString& path, qint64 size, const QByteArray& beginning = ggmlSignature)
{
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(beginning) != beginning.size() || !file.resize(size))
        qFatal("could not make %s", qPrintable(path));
    return path;
}

/// A catalogue of two small entries, so that whole downloads fit into a test.
inline constexpr qint64 tinySize = 1000;
inline WhisperModel tinyModel(const QString& id = QStringLiteral("tiny"))
{
    WhisperModel model = WhisperModel::fallback();
    model.id = id;
    model.repo = u"somebody/" + id;
    model.approximateSizeBytes = tinySize;
    return model;
}

/// The bytes of a file that passes for such an entry.
inline QByteArray tinyBody(qint64 size = tinySize)
{
    return ggmlSignature + QByteArray(size - ggmlSignature.size(), 'x');
}

} // namespace tulvane::test
