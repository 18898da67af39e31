#include <base/AtomicFile.h>
#include <models/ModelFolders.h>

namespace tulvane {

QString ModelFolders::transfers() const
{
    const QString beside = QDir::cleanPath(models + QStringLiteral("/../Downloads"));
    return fileSystemOf(models) == fileSystemOf(beside) ? beside : models + QStringLiteral("/.downloads");
}

} // namespace tulvane
