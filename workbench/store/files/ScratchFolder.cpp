#include "workbench/store/files/ScratchFolder.h"

#include "workbench/store/files/FileLock.h"

#include <cstdlib>
#include <fcntl.h>
#include <string>
#include <sys/stat.h>

namespace workbench
{

namespace fs = std::filesystem;

namespace
{
constexpr const char* kPrefix = "oribund-scratch-";
constexpr std::size_t kScratchLetters = 6;
constexpr int kMostScratchTries = 10;

/** Others may put folders of such a name there too: only what is the user's own is opened. */
Descriptor openOwn(const fs::path& folder)
{
    struct stat present {
    };

    Descriptor opened(::open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC));
    const bool own = opened && ::fstat(opened.number(), &present) == 0 && present.st_uid == ::geteuid();
    return own ? std::move(opened) : Descriptor();
}

void removeLeft(const fs::path& parent)
{
    std::error_code failed;
    for (fs::directory_iterator one(parent, failed), end; !failed && one != end; one.increment(failed)) {
        const std::string name = one->path().filename().string();
        if (!name.starts_with(kPrefix) || name.size() != std::string_view(kPrefix).size() + kScratchLetters)
            continue;
        const Descriptor opened = openOwn(one->path());
        std::error_code ignored;
        if (opened && tryLock(opened.number(), one->path()) == LockOutcome::Held)
            fs::remove_all(one->path(), ignored);
    }
}
} // namespace

ScratchFolder::ScratchFolder(const fs::path& parent)
{
    removeLeft(parent);
    for (int i = 0; i < kMostScratchTries && path_.empty(); ++i) {
        std::string name = (parent / kPrefix).string() + std::string(kScratchLetters, 'X');
        if (!::mkdtemp(name.data()))
            return;
        opened_ = openOwn(name);
        // Another program may have taken it for a leftover before it was locked.
        if (opened_ && tryLock(opened_.number(), name) != LockOutcome::Taken)
            path_ = name;
    }
}

ScratchFolder::~ScratchFolder()
{
    std::error_code ignored;
    if (!path_.empty())
        fs::remove_all(path_, ignored);
}

} // namespace workbench
