#include <ports/HomeFolder.h>

#include <pwd.h>
#include <unistd.h>

#include <cstdlib>

namespace tulvane {

namespace {

bool isAbsolute(const char* path)
{
    return path != nullptr && *path == '/';
}

} // namespace

void knowHomeFolder()
{
    if (isAbsolute(std::getenv("HOME")))
        return;
    const passwd* const user = getpwuid(geteuid());
    if (user != nullptr && isAbsolute(user->pw_dir))
        setenv("HOME", user->pw_dir, 1);
}

} // namespace tulvane
