#pragma once

#include <filesystem>
#include <string>
#include <vector>

namespace workbench
{

/** How media are named in a project file: relative to its folder where they lie there or below. */
class MediaPaths
{
public:
    /** An empty folder: everything is named absolutely. */
    explicit MediaPaths(const std::filesystem::path& folder);

    /** As it stands in the file. What is no absolute path stays as it is. */
    std::string saved(const std::string& path) const;

    /** Whether saved() says it relative to the folder. */
    bool isRelative(const std::string& path) const { return saved(path) != path; }

    /** The absolute path of one that is relative to the folder. */
    std::string resolved(const std::string& relative) const;

private:
    std::filesystem::path folder_;
};

/**
 * Where a file may be when another one that was at `from` is at `to` now, the likeliest place first: it moved along
 * with the folders that differ, or lies beside it. All paths are absolute.
 */
std::vector<std::filesystem::path> placesAfterMove(const std::filesystem::path& from, const std::filesystem::path& to,
                                                   const std::filesystem::path& other);

} // namespace workbench
