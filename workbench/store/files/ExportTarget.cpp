#include "workbench/store/files/ExportTarget.h"

#include "workbench/store/files/FileFault.h"
#include "workbench/store/files/FileIdentity.h"

#include <algorithm>

namespace workbench
{

namespace fs = std::filesystem;

namespace
{
/** The place itself or, where there is a file, one that is free and named like it. */
fs::path freePlace(const fs::path& place)
{
    fs::path tried = place;
    std::error_code ignored;
    for (int n = 2; fs::exists(fs::symlink_status(tried, ignored)); ++n)
        tried.replace_filename(place.stem().string() + "-" + std::to_string(n) + place.extension().string());
    return tried;
}
} // namespace

std::string ExportTarget::findFault(const fs::path& path, const std::vector<std::string>& used)
{
    const fs::path target = behindLinks(path);
    if (std::any_of(used.begin(), used.end(), [&](const std::string& file) { return isSameFile(target, file); }))
        return "The edit is made of " + quotedPath(path.filename()) + ". Choose another name.";
    const int code = findWriteFault(target);
    return code == 0 ? std::string() : fileFault("write", path, code);
}

ExportTarget::ExportTarget(const fs::path& path, const std::vector<std::string>& used, Existing existing)
    : path_(behindLinks(path))
    , existing_(existing)
    , error_(findFault(path, used))
{
    std::error_code ignored;
    if (error_.empty() && existing == Existing::Keep && fs::exists(path_, ignored))
        error_ = quotedPath(path_) + " exists already. Choose another name, or let it be replaced.";
    if (!error_.empty())
        return;
    removeUnfinished(path_.parent_path());
    file_.emplace(path_);
    if (file_->error() != 0)
        error_ = fileFault("write", path_, file_->error());
}

bool ExportTarget::complete()
{
    if (!error_.empty())
        return false;
    // Rendering takes long enough for something else to have taken the name.
    const fs::path place = existing_ == Existing::Keep ? freePlace(path_) : path_;
    if (const int code = file_->moveTo(place); code != 0) {
        error_ = fileFault("write", path_, code);
        return false;
    }
    path_ = place;
    return true;
}

} // namespace workbench
