#pragma once

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

} // namespace workbench
