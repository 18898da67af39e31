#pragma once

#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QStringList>

namespace tulvane::test {

/// Writes a file and the folders that it is in.
inline void put(const QString& file, const QByteArray& content = "x")
{
    QDir().mkpath(QFileInfo(file).path());
    QFile target(file);
    if (!target.open(QIODevice::WriteOnly) || target.write(content) != content.size())
        qFatal("could not write %s", qPrintable(file));
}

inline QByteArray contentOf(const QString& file)
{
    QFile source(file);
    return source.open(QIODevice::ReadOnly) ? source.readAll() : QByteArray("(nothing)");
}

/// Every file and folder in it, by its path from there, sorted.
inline QStringList everythingIn(const QString& folder)
{
    QStringList list;
    QDirIterator items(folder, QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot,
                       QDirIterator::Subdirectories);
    while (items.hasNext())
        list.append(QDir(folder).relativeFilePath(items.next()));
    list.sort();
    return list;
}

} // namespace tulvane::test
