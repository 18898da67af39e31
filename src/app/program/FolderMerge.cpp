#include <app/program/FolderMerge.h>

#include <system_error>
#include <vector>

namespace tulvane {

namespace {

namespace fs = std::filesystem;

Result<void, QString> checked(const std::error_code& error, const fs::path& path)
{
    if (error)
        return failure(QString::fromStdString(path.string()) + QStringLiteral(": ") +
                       QString::fromStdString(error.message()));
    return {};
}

/// A link counts as itself, also where it leads nowhere: a rename would replace it.
bool isThere(const fs::path& path)
{
    std::error_code error;
    return fs::symlink_status(path, error).type() != fs::file_type::not_found;
}

bool isFolder(const fs::path& path)
{
    std::error_code error;
    return fs::is_directory(path, error);
}

Result<void, QString> moveToOtherDisk(const fs::path& from, const fs::path& to)
{
    std::error_code error;
    fs::path part = to;
    part += ".part";
    fs::copy(from, part,
             fs::copy_options::recursive | fs::copy_options::copy_symlinks |
                 fs::copy_options::overwrite_existing,
             error);
    if (!error)
        fs::rename(part, to, error);
    if (error) {
        std::error_code ignored;
        fs::remove_all(part, ignored);
        return checked(error, to);
    }
    fs::remove_all(from, error);
    return checked(error, from);
}

/// All of them before the first is moved: what a folder lists while it changes is not certain.
Result<std::vector<fs::path>, QString> namesIn(const fs::path& folder)
{
    std::error_code error;
    std::vector<fs::path> names;
    for (fs::directory_iterator item(folder, error); !error && item != fs::directory_iterator();
         item.increment(error))
        names.push_back(item->path().filename());
    if (const auto read = checked(error, folder); !read)
        return failure(read.error());
    return names;
}

Result<void, QString> moveMissing(const fs::path& from, const fs::path& to, const fs::path& inner)
{
    const auto names = namesIn(from);
    if (!names)
        return failure(names.error());
    for (const fs::path& name : *names) {
        Result<void, QString> moved;
        if (!isThere(to / name))
            moved = moveItem(from / name, to / name);
        else if (name == inner && isFolder(from / name) && isFolder(to / name))
            moved = moveMissing(from / name, to / name, {});
        if (!moved)
            return moved;
    }
    return {};
}

} // namespace

Result<void, QString> moveItem(const fs::path& from, const fs::path& to)
{
    std::error_code error;
    fs::rename(from, to, error);
    if (error == std::errc::cross_device_link)
        return moveToOtherDisk(from, to);
    return checked(error, from);
}

Result<void, QString> mergeFolder(const fs::path& from, const fs::path& to, const fs::path& inner)
{
    if (const auto moved = moveMissing(from, to, inner); !moved)
        return moved;
    std::error_code error;
    fs::remove_all(from, error);
    return checked(error, from);
}

} // namespace tulvane
