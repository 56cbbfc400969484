#pragma once

#include "workbench/system/Descriptor.h"

#include <filesystem>

namespace workbench
{

/**
 * A folder of one's own for what is needed only while the program runs, removed with the object. What killed programs
 * have left of theirs is removed when the next one is made.
 */
class ScratchFolder
{
public:
    /** In the system's folder for temporary files, or in another. */
    explicit ScratchFolder(const std::filesystem::path& parent = std::filesystem::temp_directory_path());
    ~ScratchFolder();

    ScratchFolder(const ScratchFolder&) = delete;
    ScratchFolder& operator=(const ScratchFolder&) = delete;

    /** Empty when no folder could be made. */
    const std::filesystem::path& path() const { return path_; }

private:
    std::filesystem::path path_;
    Descriptor opened_; ///< holds the lock by which it is known to be in use
};

} // namespace workbench
