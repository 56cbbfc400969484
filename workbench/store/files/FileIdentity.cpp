#include "workbench/store/files/FileIdentity.h"

#include <sys/stat.h>

namespace workbench
{

namespace fs = std::filesystem;

namespace
{
constexpr int kMostLinks = 40; // as many as the system follows
} // namespace

fs::path behindLinks(const fs::path& path)
{
    std::error_code failed;
    fs::path start = fs::absolute(path, failed).lexically_normal();
    fs::path place = start;
    for (int i = 0; i < kMostLinks; ++i) {
        if (!fs::is_symlink(fs::symlink_status(place, failed)))
            return place;
        // A link begins in the folder where it really lies.
        const fs::path folder = fs::canonical(place.parent_path(), failed);
        const fs::path next = folder / fs::read_symlink(place, failed);
        const fs::path home = fs::canonical(next.parent_path(), failed);
        place = home.empty() ? next : home / next.filename();
    }
    return start;
}

bool isSameFile(const fs::path& a, const fs::path& b)
{
    struct stat first {
    };

    struct stat second {
    };

    const bool hasFirst = ::stat(a.c_str(), &first) == 0;
    const bool hasSecond = ::stat(b.c_str(), &second) == 0;
    if (hasFirst && hasSecond)
        return first.st_dev == second.st_dev && first.st_ino == second.st_ino;
    std::error_code failed;
    return !hasFirst && !hasSecond && fs::weakly_canonical(a, failed) == fs::weakly_canonical(b, failed) && !failed;
}

FileStamp stampOf(const fs::path& path)
{
    struct stat present {
    };

    if (::stat(path.c_str(), &present) != 0 || !S_ISREG(present.st_mode))
        return {};
    return {present.st_dev, present.st_ino, present.st_size,
            present.st_mtim.tv_sec * 1'000'000'000 + present.st_mtim.tv_nsec};
}

} // namespace workbench
