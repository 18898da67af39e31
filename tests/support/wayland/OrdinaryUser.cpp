#include <support/Paths.h>
#include <support/wayland/OrdinaryUser.h>

#include <QFileInfo>

#include <grp.h>
#include <pwd.h>
#include <sys/prctl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cstdio>

namespace tulvane::test {

namespace {

bool mayBeEntered(const QString& folder)
{
    for (QString path = folder; path != QStringLiteral("/"); path = QFileInfo(path).path()) {
        struct stat facts{};
        if (::stat(path.toLocal8Bit().constData(), &facts) != 0 || (facts.st_mode & S_IXOTH) == 0)
            return false;
    }
    return true;
}

} // namespace

bool becomeOrdinaryUser()
{
    if (::getuid() != 0)
        return true;
    if (!mayBeEntered(sourceFolder())) {
        std::fprintf(stderr, "%s is root's alone: desktops of another user cannot be tested from there\n",
                     qPrintable(sourceFolder()));
        return false;
    }
    const passwd* const user = ::getpwnam("nobody");
    if (user == nullptr || ::setgroups(0, nullptr) != 0 || ::setgid(user->pw_gid) != 0 ||
        ::setuid(user->pw_uid) != 0)
        return false;
    // Another user's process that was root's is closed to its own kind, and KWin looks at who presses keys.
    ::prctl(PR_SET_DUMPABLE, 1);
    ::setenv("USER", user->pw_name, 1);
    ::setenv("LOGNAME", user->pw_name, 1);
    ::setenv("HOME", "/nonexistent", 1);
    return true;
}

} // namespace tulvane::test
