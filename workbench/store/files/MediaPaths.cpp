#include "workbench/store/files/MediaPaths.h"

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

} // namespace workbench
