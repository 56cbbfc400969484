#pragma once

#include "workbench/system/Descriptor.h"

#include <filesystem>
#include <memory>
#include <string>

namespace workbench
{

/**
 * A file that a running session holds locked, and what it says of the session: the project that is open. The lock ends
 * with the object, or with the process, however that ends; the files stay. Beside it lies the session's copy of the
 * project, when there is one.
 */
class SessionLock
{
public:
    /** Begins a session in a folder, which is made where needed. Null, and why in `problem`, when that fails. */
    static std::unique_ptr<SessionLock> create(const std::filesystem::path& folder, std::string& problem);

    /** Takes over the file of a session that has ended; null while it runs, or when its file is gone. */
    static std::unique_ptr<SessionLock> take(const std::filesystem::path& file);

    static bool isSessionFile(const std::filesystem::path& path);
    static std::filesystem::path sessionOf(const std::filesystem::path& copy);

    /** Where the session's copy of its project is kept. */
    std::filesystem::path copy() const;

    std::filesystem::path project() const;
    void setProject(const std::filesystem::path& project);

    /** As setProject(), unless another session that runs has the project: then this one has none, and it is false. */
    bool claimProject(const std::filesystem::path& project);

    /** Removes the session's own file. */
    void removeFile();

private:
    SessionLock(const std::filesystem::path& file, Descriptor opened);

    bool isOpenElsewhere(const std::filesystem::path& project) const;

    std::filesystem::path file_;
    Descriptor opened_; ///< holds the lock
};

} // namespace workbench
