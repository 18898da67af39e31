#include <base/PrivateFolder.h>

#include <QDir>
#include <QFile>

#include <sys/stat.h>

#include <cerrno>

namespace tulvane {

namespace {

constexpr mode_t usersFolder = 0700;

} // namespace

Result<void, QString> makePrivateFolder(const QString& path)
{
    const QString folder = QDir::cleanPath(path);
    const QByteArray name = QFile::encodeName(folder);
    int error = ::mkdir(name.constData(), usersFolder) == 0 ? 0 : errno;
    if (error == ENOENT && folder.contains(u'/')) {
        const QString above = folder.section(u'/', 0, -2);
        if (!above.isEmpty()) {
            if (Result<void, QString> made = makePrivateFolder(above); !made)
                return made;
            error = ::mkdir(name.constData(), usersFolder) == 0 ? 0 : errno;
        }
    }
    struct stat status{};
    if (error == 0 || (::stat(name.constData(), &status) == 0 && S_ISDIR(status.st_mode)))
        return {};
    return failure(qt_error_string(error == EEXIST ? ENOTDIR : error));
}

} // namespace tulvane
