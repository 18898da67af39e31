#include <platform/linux/transfers/HelperAddress.h>

#include <QCryptographicHash>
#include <QDir>
#include <QFile>

#include <sys/stat.h>
#include <sys/un.h>
#include <unistd.h>

namespace tulvane::transfers {

namespace {

constexpr mode_t usersFolder = 0700;
constexpr mode_t otherUsers = 0077;

/// Makes the folder; false when it is not a folder that this user alone can enter.
bool makePrivate(const QString& folder)
{
    const QByteArray name = QFile::encodeName(folder);
    ::mkdir(name.constData(), usersFolder);
    struct stat status{};
    // Not following a link: another user may have put one there first.
    return ::lstat(name.constData(), &status) == 0 && S_ISDIR(status.st_mode) &&
           status.st_uid == ::geteuid() && (status.st_mode & otherUsers) == 0;
}

bool fits(const QString& path)
{
    return QFile::encodeName(path).size() < static_cast<qsizetype>(sizeof(sockaddr_un::sun_path));
}

} // namespace

Result<QString, QString> helperSocketFor(const QString& transferFolder)
{
    const QByteArray digest =
        QCryptographicHash::hash(QDir::cleanPath(transferFolder).toUtf8(), QCryptographicHash::Sha256);
    const QString name = u"/transfers-" + QString::fromLatin1(digest.toHex().left(12)) + u".sock";

    const QString runtime = qEnvironmentVariable("XDG_RUNTIME_DIR");
    const QString preferred = runtime + u"/tulvane";
    if (QDir::isAbsolutePath(runtime) && fits(preferred + name) && makePrivate(preferred))
        return preferred + name;
    const QString fallback = QStringLiteral("/tmp/tulvane-%1").arg(::geteuid());
    if (makePrivate(fallback))
        return fallback + name;
    return failure(fallback);
}

} // namespace tulvane::transfers
