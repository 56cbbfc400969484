#include "workbench/store/files/MediaPaths.h"

#include <utility>

namespace workbench
{

namespace fs = std::filesystem;

MediaPaths::MediaPaths(const fs::path& folder)
{
    std::error_code ignored;
    if (!folder.empty())
        folder_ = fs::absolute(folder, ignored).lexically_normal();
    // A path that ends with a separator has an empty last part, which would be compared with a name.
    if (!folder_.has_filename())
        folder_ = folder_.parent_path();
}

std::string MediaPaths::saved(const std::string& path) const
{
    // A colon would be taken for the end of a service's name.
    if (folder_.empty() || !path.starts_with('/') || path.find(':') != std::string::npos)
        return path;
    const fs::path relative = fs::path(path).lexically_relative(folder_);
    const bool inside = !relative.empty() && *relative.begin() != ".." && *relative.begin() != ".";
    return inside && resolved(relative.string()) == path ? relative.string() : path;
}

std::string MediaPaths::resolved(const std::string& relative) const
{
    return (folder_ / relative).lexically_normal().string();
}

std::vector<fs::path> placesAfterMove(const fs::path& from, const fs::path& to, const fs::path& other)
{
    std::vector<fs::path> places;
    // The folder that moved is the last one above which the two paths are no longer alike at their ends.
    fs::path before = from;
    fs::path after = to;
    while (before.has_relative_path() && after.has_relative_path() && before.filename() == after.filename()) {
        before = before.parent_path();
        after = after.parent_path();
    }
    for (const auto& [old, now] : {std::pair(before, after), std::pair(from.parent_path(), to.parent_path())}) {
        const fs::path below = other.lexically_relative(old);
        if (!below.empty() && *below.begin() != "..")
            places.push_back((now / below).lexically_normal());
    }
    places.push_back(to.parent_path() / other.filename());
    return places;
}

} // namespace workbench
