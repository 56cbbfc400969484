#pragma once

#include "workbench/system/Descriptor.h"

#include <filesystem>
#include <string_view>

namespace workbench
{

/**
 * A file that is being made beside the one that it is to become: hidden, under a name that no other file has, and gone
 * with the object unless it was moved into place. While it is being made it is locked, by which what a killed program
 * has left is known from what is at work. Usable on any thread.
 */
class UnfinishedFile
{
public:
    /** The target is no link (see behindLinks()). The permissions are its own where there is one, else the usual. */
    explicit UnfinishedFile(const std::filesystem::path& target);
    ~UnfinishedFile();

    UnfinishedFile(const UnfinishedFile&) = delete;
    UnfinishedFile& operator=(const UnfinishedFile&) = delete;

    /** Why it could not be made, as an errno; 0 when it could. */
    int error() const { return error_; }

    int descriptor() const { return file_.number(); }

    /** Has the extension of the target. */
    const std::filesystem::path& path() const { return path_; }

    /** Appends. Fails with an errno in error(), after which nothing more is written. */
    bool write(std::string_view bytes);

    enum class Durable { No, Yes };

    /** Makes what was written durable, unless it can be had again, and gives it the target's name. An errno; 0 when it
        succeeded. */
    int moveTo(const std::filesystem::path& target, Durable durable = Durable::Yes);

private:
    void create(const std::filesystem::path& target, bool secret);

    std::filesystem::path path_; ///< empty while there is none
    Descriptor file_;
    int error_ = 0;
};

/** Why a file cannot be written or replaced there, as an errno; 0 when nothing is known against it. */
int findWriteFault(const std::filesystem::path& target);

/** Removes the unfinished files in a folder whose makers have ended. */
void removeUnfinished(const std::filesystem::path& folder);

} // namespace workbench
