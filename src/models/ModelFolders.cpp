#include <models/ModelFolders.h>

#include <QFile>
#include <QFileInfo>

#include <sys/stat.h>

#include <optional>

namespace tulvane {

namespace {

/// The file system that a path lies on; of its nearest folder that exists.
std::optional<dev_t> deviceOf(QString path)
{
    struct stat status = {};
    while (::stat(QFile::encodeName(path).constData(), &status) != 0) {
        const QString parent = QFileInfo(path).path();
        if (parent == path)
            return std::nullopt;
        path = parent;
    }
    return status.st_dev;
}

} // namespace

QString ModelFolders::transfers() const
{
    const QString beside = QDir::cleanPath(models + QStringLiteral("/../Downloads"));
    return deviceOf(models) == deviceOf(beside) ? beside : models + QStringLiteral("/.downloads");
}

} // namespace tulvane
