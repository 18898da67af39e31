#pragma once

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

namespace tulvane::test {

/// A folder for one test, removed with it.
class ScratchFolder final {
public:
    [[nodiscard]] QString path() const { return m_folder.path(); }
    [[nodiscard]] QString file(const QString& name) const { return m_folder.filePath(name); }

    /// Writes a file into the folder and returns its path.
    QString write(const QString& name, const QByteArray& content) const
    {
        QFile target(file(name));
        if (!target.open(QIODevice::WriteOnly) || target.write(content) != content.size())
            qFatal("could not write %s", qPrintable(target.fileName()));
        return target.fileName();
    }

    [[nodiscard]] QByteArray read(const QString& name) const
    {
        QFile source(file(name));
        return source.open(QIODevice::ReadOnly) ? source.readAll() : QByteArray();
    }

private:
    QTemporaryDir m_folder;
};

} // namespace tulvane::test
