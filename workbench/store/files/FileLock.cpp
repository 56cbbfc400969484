#include "workbench/store/files/FileLock.h"

#include <cerrno>
#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <thread>

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

Descriptor waitForFolder(const std::filesystem::path& folder, std::chrono::milliseconds patience)
{
    constexpr std::chrono::milliseconds pause{2};
    Descriptor opened(::open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    if (!opened)
        return opened;
    const auto end = std::chrono::steady_clock::now() + patience;
    for (;;) {
        const LockOutcome outcome = tryLock(opened.number(), folder);
        if (outcome == LockOutcome::Held)
            return opened;
        if (outcome == LockOutcome::Unavailable || std::chrono::steady_clock::now() > end)
            return Descriptor();
        std::this_thread::sleep_for(pause);
    }
}

} // namespace workbench
