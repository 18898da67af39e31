// Compares pictures with the reviewed ones:
//   tulvane_compare_pictures REFERENCE_FOLDER PICTURE...
// Each picture is compared with the one of its name. Where they differ, says so and writes NAME-marked.png,
// with the different pixels in red, beside the picture. Status 1 where one differs, or has no reference.

#include "PictureComparison.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>

#include <cstdio>

namespace {

bool isAsReviewed(const QDir& references, const QString& file)
{
    const QFileInfo picture(file);
    const QImage reference(references.filePath(picture.fileName()));
    if (reference.isNull()) {
        std::printf("%s: there is no reviewed picture of it\n", qPrintable(picture.fileName()));
        return false;
    }
    const auto difference = tulvane::test::compare(reference, QImage(file));
    if (difference.isSmall())
        return true;
    const QString marked = picture.dir().filePath(picture.completeBaseName() + QStringLiteral("-marked.png"));
    difference.marked.save(marked);
    std::printf("%s: %s, see %s\n", qPrintable(picture.fileName()), qPrintable(difference.inWords),
                qPrintable(marked));
    return false;
}

} // namespace

int main(int argc, char** argv)
{
    const QCoreApplication app(argc, argv);
    QStringList files = QCoreApplication::arguments().mid(1);
    if (files.size() < 2)
        qFatal("Which pictures?");
    const QDir references(files.takeFirst());
    bool isGood = true;
    for (const QString& file : files)
        isGood = isAsReviewed(references, file) && isGood;
    return isGood ? 0 : 1;
}
