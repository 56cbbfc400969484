#include "workbench/store/files/SessionLock.h"

#include "workbench/store/files/AtomicFile.h"
#include "workbench/store/json/JsonText.h"

#include <cerrno>
#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

namespace workbench
{

namespace fs = std::filesystem;

namespace
{
constexpr const char* kSessionExtension = ".session";
constexpr const char* kCopyExtension = ".mlt";
constexpr std::size_t kLargestLock = 1u << 16;

/** Opens and locks a file, and makes sure that it still has its name: another program may just have cleared it away. */
int openLocked(const fs::path& file, int flags)
{
    const int descriptor = ::open(file.c_str(), O_RDWR | O_CLOEXEC | flags, 0600);
    if (descriptor < 0)
        return -1;

    struct stat opened {
    };

    struct stat named {
    };

    if (::flock(descriptor, LOCK_EX | LOCK_NB) == 0 && ::fstat(descriptor, &opened) == 0 &&
        ::stat(file.c_str(), &named) == 0 && opened.st_ino == named.st_ino)
        return descriptor;
    ::close(descriptor);
    errno = EAGAIN;
    return -1;
}
} // namespace

std::unique_ptr<SessionLock> SessionLock::create(const fs::path& folder, std::string& problem)
{
    std::error_code failed;
    fs::create_directories(folder, failed);
    // Names only have to differ; a process may have several sessions, and numbers of processes come again.
    for (int n = 0; n < 10'000 && !failed; ++n) {
        const fs::path file = folder / (std::to_string(::getpid()) + "-" + std::to_string(n) + kSessionExtension);
        if (const int descriptor = openLocked(file, O_CREAT | O_EXCL); descriptor >= 0)
            return std::unique_ptr<SessionLock>(new SessionLock(file, descriptor));
        if (errno != EEXIST && errno != EAGAIN)
            failed.assign(errno, std::generic_category());
    }
    problem = "Nothing can be kept for recovery in \"" + folder.string() + "\": " + failed.message() +
              ". Save often, or make that folder writable.";
    return nullptr;
}

std::unique_ptr<SessionLock> SessionLock::take(const fs::path& file)
{
    const int descriptor = openLocked(file, 0);
    return descriptor < 0 ? nullptr : std::unique_ptr<SessionLock>(new SessionLock(file, descriptor));
}

SessionLock::SessionLock(const fs::path& file, int descriptor)
    : file_(file)
    , descriptor_(descriptor)
{
}

SessionLock::~SessionLock()
{
    ::close(descriptor_);
}

bool SessionLock::isSessionFile(const fs::path& path)
{
    return path.extension() == kSessionExtension;
}

fs::path SessionLock::sessionOf(const fs::path& copy)
{
    return fs::path(copy).replace_extension(kSessionExtension);
}

fs::path SessionLock::copy() const
{
    return fs::path(file_).replace_extension(kCopyExtension);
}

fs::path SessionLock::project() const
{
    const ParsedJson parsed = parseJson(readFile(file_, kLargestLock).bytes);
    if (!parsed.value.is_object() || !parsed.value.contains("project") || !parsed.value["project"].is_string())
        return {};
    return parsed.value["project"].get<std::string>();
}

void SessionLock::setProject(const fs::path& project)
{
    // The file that is locked has to stay the same one, and a name that is cut short is only a name.
    const std::string text = readableText({{"project", project.string()}});
    if (::ftruncate(descriptor_, 0) == 0)
        static_cast<void>(::pwrite(descriptor_, text.data(), text.size(), 0) < 0);
}

void SessionLock::removeFile()
{
    std::error_code ignored;
    fs::remove(file_, ignored);
}

} // namespace workbench
