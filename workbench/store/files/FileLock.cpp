#include "workbench/store/files/FileLock.h"

#include <cerrno>
#include <sys/file.h>
#include <sys/stat.h>

namespace workbench
{

LockOutcome tryLock(int descriptor, const std::filesystem::path& path)
{
    struct stat opened {
    };

    struct stat named {
    };

    if (::flock(descriptor, LOCK_EX | LOCK_NB) != 0)
        return errno == EWOULDBLOCK ? LockOutcome::Taken : LockOutcome::Unavailable;
    if (::fstat(descriptor, &opened) != 0)
        return LockOutcome::Unavailable;
    // Between opening and locking it, another program may have cleared the name away.
    const bool same =
        ::stat(path.c_str(), &named) == 0 && opened.st_ino == named.st_ino && opened.st_dev == named.st_dev;
    return same ? LockOutcome::Held : LockOutcome::Taken;
}

} // namespace workbench
