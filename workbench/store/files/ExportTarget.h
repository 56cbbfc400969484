#pragma once

#include "workbench/store/files/UnfinishedFile.h"

#include <filesystem>
#include <optional>
#include <string>
#include <vector>

namespace workbench
{

/**
 * The file that an export makes. It is written under another name beside its place, which it takes only when it is
 * complete; without complete() nothing of it stays. Usable on any thread.
 */
class ExportTarget
{
public:
    /** What becomes of a file that has the name already. */
    enum class Existing { Keep, Replace };

    /**
     * Why nothing can be exported to a path, for a person to read; empty when it can. `used` are the files that the
     * edit is made of: none of them is ever written over, whatever it is called in the path.
     */
    static std::string findFault(const std::filesystem::path& path, const std::vector<std::string>& used);

    /** Removes what killed exports have left in the folder. What is wrong is in error(). */
    ExportTarget(const std::filesystem::path& path, const std::vector<std::string>& used, Existing existing);

    const std::string& error() const { return error_; }

    /** Where to write, while there is no error(): an empty file, whose extension is that of path(). */
    const std::filesystem::path& partial() const { return file_->path(); }

    /** Where it is to be: after complete() beside the place asked for, when a file came up there that is kept. */
    const std::filesystem::path& path() const { return path_; }

    /** Puts what was written in place. False, and error(), when that fails. */
    bool complete();

private:
    std::filesystem::path path_;
    Existing existing_;
    std::string error_;
    std::optional<UnfinishedFile> file_; ///< none when it cannot be exported
};

} // namespace workbench
