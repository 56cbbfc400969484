#include "workbench/store/files/UnfinishedFile.h"

#include "workbench/store/files/FileLock.h"

#include <algorithm>
#include <cerrno>
#include <fcntl.h>
#include <random>
#include <string>
#include <string_view>
#include <sys/stat.h>
#include <unistd.h>

namespace workbench
{

namespace fs = std::filesystem;

namespace
{
constexpr std::size_t kLongestName = 255; // bytes, of the file systems in use
constexpr std::size_t kLongestExtension = 16;
constexpr std::string_view kMark = ".oribund-";
constexpr std::string_view kLetters = "abcdefghijklmnopqrstuvwxyz0123456789";
constexpr std::size_t kRandomLetters = 6;
constexpr int kMostTries = 100;

std::string randomLetters()
{
    std::random_device random;
    std::string letters;
    for (std::size_t i = 0; i < kRandomLetters; ++i)
        letters += kLetters[random() % kLetters.size()];
    return letters;
}

/** Hidden, and no longer than a name can be. */
std::string unfinishedName(const fs::path& target)
{
    std::string extension = target.extension().string();
    if (extension.size() > kLongestExtension)
        extension.clear();
    const std::string ending = std::string(kMark) + randomLetters() + extension;
    std::string name(".");
    name += target.stem().string();
    name.resize(std::min(name.size(), kLongestName - ending.size()));
    return name + ending;
}

bool isUnfinishedName(const std::string& name)
{
    const std::size_t mark = name.rfind(kMark);
    if (!name.starts_with('.') || mark == std::string::npos || mark == 0)
        return false;
    const std::string_view rest = std::string_view(name).substr(mark + kMark.size());
    return rest.size() >= kRandomLetters &&
           rest.substr(0, kRandomLetters).find_first_not_of(kLetters) == std::string_view::npos &&
           (rest.size() == kRandomLetters || rest[kRandomLetters] == '.');
}

void syncFolder(const fs::path& folder)
{
    // The new file is in place; where a folder cannot be synced, nothing more can be done about it.
    const Descriptor opened(::open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    if (opened)
        static_cast<void>(::fsync(opened.number()));
}
} // namespace

int findWriteFault(const fs::path& target)
{
    struct stat present {
    };

    if (::stat(target.c_str(), &present) != 0) {
        if (errno != ENOENT)
            return errno;
        return ::access(target.parent_path().c_str(), W_OK | X_OK) == 0 ? 0 : errno;
    }
    if (!S_ISREG(present.st_mode))
        return S_ISDIR(present.st_mode) ? EISDIR : EINVAL;
    // Replacing a file asks nothing of the file itself, but one that is protected is meant to stay.
    return ::access(target.c_str(), W_OK) == 0 ? 0 : errno;
}

UnfinishedFile::UnfinishedFile(const fs::path& target)
{
    struct stat present {
    };

    const bool exists = ::stat(target.c_str(), &present) == 0;
    error_ = findWriteFault(target);
    if (error_ == 0)
        create(target, exists);
    if (error_ == 0 && exists && ::fchmod(file_.number(), present.st_mode & 07777) != 0)
        error_ = errno;
}

void UnfinishedFile::create(const fs::path& target, bool secret)
{
    for (int i = 0; i < kMostTries; ++i) {
        const fs::path path = target.parent_path() / unfinishedName(target);
        // The system takes off what the user's mask forbids. What is to have other permissions has none until then.
        Descriptor opened(::open(path.c_str(), O_RDWR | O_CREAT | O_EXCL | O_CLOEXEC, secret ? 0600 : 0666));
        if (!opened && errno != EEXIST) {
            error_ = errno;
            return;
        }
        // A disk without locks has no clearing up either.
        if (opened && tryLock(opened.number(), path) != LockOutcome::Taken) {
            file_ = std::move(opened);
            path_ = path;
            return;
        }
    }
    error_ = EEXIST;
}

UnfinishedFile::~UnfinishedFile()
{
    if (!path_.empty())
        ::unlink(path_.c_str());
}

bool UnfinishedFile::write(std::string_view bytes)
{
    while (error_ == 0 && !bytes.empty()) {
        const ssize_t done = ::write(file_.number(), bytes.data(), bytes.size());
        if (done >= 0)
            bytes.remove_prefix(static_cast<std::size_t>(done));
        else if (errno != EINTR)
            error_ = errno;
    }
    return error_ == 0;
}

int UnfinishedFile::moveTo(const fs::path& target, Durable durable)
{
    if (error_ != 0 || path_.empty())
        return error_ != 0 ? error_ : EBADF;
    const bool isDurable = durable == Durable::Yes;
    if ((isDurable && ::fsync(file_.number()) != 0) || ::rename(path_.c_str(), target.c_str()) != 0)
        return errno;
    path_.clear();
    file_.close();
    if (isDurable)
        syncFolder(target.parent_path());
    return 0;
}

void removeUnfinished(const fs::path& folder)
{
    std::error_code failed;
    for (fs::directory_iterator file(folder, failed), end; !failed && file != end; file.increment(failed)) {
        std::error_code unknown;
        if (!isUnfinishedName(file->path().filename().string()) || !fs::is_regular_file(file->symlink_status(unknown)))
            continue;
        const Descriptor opened(::open(file->path().c_str(), O_RDONLY | O_CLOEXEC | O_NOFOLLOW | O_NONBLOCK));
        if (opened && tryLock(opened.number(), file->path()) == LockOutcome::Held)
            ::unlink(file->path().c_str());
    }
}

} // namespace workbench
