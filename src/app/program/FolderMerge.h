#pragma once

#include <base/Result.h>

#include <QString>

#include <filesystem>

namespace tulvane {

/// Moves a file or a folder with all that is in it to a place where nothing is: in one step, or, where that
/// place is on another disk, by a copy that appears whole. Fails with the reason, which names the path; then
/// everything is where it was. Any thread.
[[nodiscard]] Result<void, QString> moveItem(const std::filesystem::path& from,
                                             const std::filesystem::path& to);

/// Moves every item of `from` into the folder `to` unless one of its name is there already; the folders named
/// `inner` in both are merged in the same way. Then removes `from` with all that is left in it. Stops at the
/// first failure, with the reason; what has been moved stays moved, and `from` is kept. Any thread.
[[nodiscard]] Result<void, QString> mergeFolder(const std::filesystem::path& from,
                                                const std::filesystem::path& to,
                                                const std::filesystem::path& inner);

} // namespace tulvane
