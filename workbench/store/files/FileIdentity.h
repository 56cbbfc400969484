#pragma once

#include <cstdint>
#include <filesystem>

namespace workbench
{

/**
 * Where a file of that name really lies, as an absolute path: a link is followed, also one to a file that is not there
 * yet. Links among the folders stay as they are, so that what lies beside the file is still named through them. A link
 * that leads nowhere, such as one to itself, is given back unchanged.
 */
std::filesystem::path behindLinks(const std::filesystem::path& path);

/** Whether two names lead to one file, through whatever links. Names of files that are not there are compared. */
bool isSameFile(const std::filesystem::path& a, const std::filesystem::path& b);

/** By what a file is known to be the one that was seen before, with what it held then. */
struct FileStamp {
    std::uint64_t device = 0;
    std::uint64_t number = 0; ///< 0 where there is no file, or a folder
    std::int64_t size = 0;
    std::int64_t changed = 0; ///< nanoseconds

    bool operator==(const FileStamp&) const = default;
};

FileStamp stampOf(const std::filesystem::path& path);

} // namespace workbench
