#include "workbench/store/files/AtomicFile.h"

#include <algorithm>
#include <cerrno>

#include <fcntl.h>
#include <sys/stat.h>
#include <system_error>
#include <unistd.h>
#include <vector>

namespace workbench
{

namespace fs = std::filesystem;

namespace
{
constexpr std::size_t kLongestName = 255; // bytes, of the file systems in use

/** A path as it stands in a message. */
std::string quoted(const fs::path& path)
{
    return std::string("\"").append(path.string()).append("\"");
}

std::string reasonOf(int code)
{
    switch (code) {
    case ENOSPC:
    case EDQUOT:
        return "the disk is full. Free some space, or choose another place";
    case EFBIG:
        return "the file would become larger than allowed here";
    case EACCES:
    case EPERM:
        return "access is not allowed. Check the permissions, or choose another place";
    case EROFS:
        return "the disk is read-only. Choose another place";
    case ENOENT:
        return "there is no such file or folder";
    case ENOTDIR:
        return "a part of the path is not a folder";
    case EISDIR:
        return "a folder has that name";
    case ENAMETOOLONG:
        return "the name is too long";
    default:
        return std::generic_category().message(code);
    }
}

std::string failure(const char* action, const fs::path& path, int code)
{
    return std::string("Cannot ") + action + " " + quoted(path) + ": " + reasonOf(code) + ".";
}

/** Where the contents really go: a link is to stay one. */
fs::path behindLinks(const fs::path& path)
{
    std::error_code ignored;
    fs::path real = fs::canonical(path, ignored);
    return real.empty() ? fs::absolute(path, ignored) : real;
}

/** The template of a name beside the file's, hidden, and no longer than a name can be. */
std::string temporaryName(const fs::path& target)
{
    const std::string suffix = ".XXXXXX";
    std::string name(".");
    name += target.filename().string();
    name.resize(std::min(name.size(), kLongestName - suffix.size()));
    return (target.parent_path() / (name + suffix)).string();
}

mode_t usualMode()
{
    const mode_t mask = ::umask(0);
    ::umask(mask);
    return 0666 & ~mask;
}

/** A descriptor that is closed at the end of a block. */
struct Descriptor {
    explicit Descriptor(int opened)
        : number(opened)
    {
    }

    ~Descriptor()
    {
        if (number >= 0)
            ::close(number);
    }

    Descriptor(const Descriptor&) = delete;
    Descriptor& operator=(const Descriptor&) = delete;

    int number;
};
} // namespace

AtomicFile::AtomicFile(const fs::path& path)
    : target_(behindLinks(path))
{
    struct stat present {
    };

    const bool exists = ::stat(target_.c_str(), &present) == 0;
    if (exists && !S_ISREG(present.st_mode)) {
        fail("write", S_ISDIR(present.st_mode) ? EISDIR : EINVAL);
        return;
    }
    // Replacing a file asks nothing of the file itself, but one that is protected is meant to stay.
    if (exists && ::access(target_.c_str(), W_OK) != 0) {
        fail("write", errno);
        return;
    }
    std::string name = temporaryName(target_);
    descriptor_ = ::mkostemp(name.data(), O_CLOEXEC);
    if (descriptor_ < 0) {
        fail("write", errno);
        return;
    }
    temporary_ = name;
    if (::fchmod(descriptor_, exists ? present.st_mode & 07777 : usualMode()) != 0)
        fail("write", errno);
}

AtomicFile::~AtomicFile()
{
    if (descriptor_ >= 0)
        ::close(descriptor_);
    if (!temporary_.empty())
        ::unlink(temporary_.c_str());
}

bool AtomicFile::write(std::string_view bytes)
{
    while (error_.empty() && !bytes.empty()) {
        const ssize_t done = ::write(descriptor_, bytes.data(), bytes.size());
        if (done >= 0)
            bytes.remove_prefix(static_cast<std::size_t>(done));
        else if (errno != EINTR)
            fail("write", errno);
    }
    return error_.empty();
}

bool AtomicFile::commit()
{
    if (!error_.empty())
        return false;
    if (descriptor_ < 0)
        return fail("write", EBADF);
    if (::fsync(descriptor_) != 0)
        return fail("write", errno);
    const int closed = ::close(descriptor_);
    descriptor_ = -1;
    if (closed != 0)
        return fail("write", errno);
    if (::rename(temporary_.c_str(), target_.c_str()) != 0)
        return fail("replace", errno);
    temporary_.clear();
    syncFolder();
    return true;
}

void AtomicFile::syncFolder() const
{
    // The new file is in place; where a folder cannot be synced, nothing more can be done about it.
    const Descriptor folder(::open(target_.parent_path().c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    if (folder.number >= 0)
        static_cast<void>(::fsync(folder.number));
}

bool AtomicFile::fail(const char* action, int code)
{
    if (error_.empty())
        error_ = failure(action, target_, code);
    return false;
}

std::string replaceFile(const fs::path& path, std::string_view contents)
{
    AtomicFile file(path);
    if (file.write(contents))
        file.commit();
    return file.error();
}

FileContents readFile(const fs::path& path, std::size_t limit)
{
    FileContents result;
    // Without blocking: what is read may turn out to be a pipe that nobody writes to.
    const Descriptor file(::open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK));

    struct stat present {
    };

    const auto failed = [&](int code) {
        result.bytes.clear();
        result.error = failure("read", path, code);
        return result;
    };
    if (file.number < 0 || ::fstat(file.number, &present) != 0)
        return failed(errno);
    if (!S_ISREG(present.st_mode))
        return failed(S_ISDIR(present.st_mode) ? EISDIR : EINVAL);

    std::vector<char> piece(1 << 18);
    for (;;) {
        const ssize_t got = ::read(file.number, piece.data(), piece.size());
        if (got < 0 && errno == EINTR)
            continue;
        if (got < 0)
            return failed(errno);
        if (got == 0)
            return result;
        if (result.bytes.size() + static_cast<std::size_t>(got) > limit)
            return failed(EFBIG);
        result.bytes.append(piece.data(), static_cast<std::size_t>(got));
    }
}

} // namespace workbench
