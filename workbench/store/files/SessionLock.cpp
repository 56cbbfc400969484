#include "workbench/store/files/SessionLock.h"

#include "workbench/store/files/AtomicFile.h"
#include "workbench/store/files/FileIdentity.h"
#include "workbench/store/files/FileLock.h"
#include "workbench/store/files/PathText.h"
#include "workbench/store/json/JsonText.h"

#include <cerrno>
#include <fcntl.h>
#include <unistd.h>

namespace workbench
{

namespace fs = std::filesystem;

namespace
{
constexpr const char* kSessionExtension = ".session";
constexpr const char* kCopyExtension = ".mlt";
constexpr std::size_t kLargestLock = 1u << 16;

constexpr std::chrono::seconds kPatienceForFolder{2};

/** Opens and locks a file; none, and errno, when it cannot be opened or another has it. */
Descriptor openLocked(const fs::path& file, int flags)
{
    Descriptor opened(::open(file.c_str(), O_RDWR | O_CLOEXEC | flags, 0600));
    if (!opened)
        return opened;
    const LockOutcome outcome = tryLock(opened.number(), file);
    if (outcome == LockOutcome::Held)
        return opened;
    if (outcome == LockOutcome::Taken)
        errno = EAGAIN;
    return Descriptor();
}

/** The project that a session file names; empty for none. */
fs::path projectIn(const fs::path& sessionFile)
{
    const ParsedJson parsed = parseJson(readFile(sessionFile, kLargestLock).bytes);
    if (!parsed.value.is_object() || !parsed.value.contains("project") || !parsed.value["project"].is_string())
        return {};
    return pathOfText(parsed.value["project"].get<std::string>());
}
} // namespace

std::unique_ptr<SessionLock> SessionLock::create(const fs::path& folder, std::string& problem)
{
    std::error_code failed;
    fs::create_directories(folder, failed);
    // Names only have to differ; a process may have several sessions, and numbers of processes come again.
    for (int n = 0; n < 10'000 && !failed; ++n) {
        const fs::path file = folder / (std::to_string(::getpid()) + "-" + std::to_string(n) + kSessionExtension);
        if (Descriptor opened = openLocked(file, O_CREAT | O_EXCL); opened)
            return std::unique_ptr<SessionLock>(new SessionLock(file, std::move(opened)));
        if (errno != EEXIST && errno != EAGAIN)
            failed.assign(errno, std::generic_category());
    }
    problem = "Nothing can be kept for recovery in \"" + folder.string() + "\": " + failed.message() +
              ". Save often, or make that folder writable.";
    return nullptr;
}

std::unique_ptr<SessionLock> SessionLock::take(const fs::path& file)
{
    Descriptor opened = openLocked(file, 0);
    return opened ? std::unique_ptr<SessionLock>(new SessionLock(file, std::move(opened))) : nullptr;
}

SessionLock::SessionLock(const fs::path& file, Descriptor opened)
    : file_(file)
    , opened_(std::move(opened))
{
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
    return projectIn(file_);
}

void SessionLock::setProject(const fs::path& project)
{
    // The file that is locked has to stay the same one, and a name that is cut short is only a name.
    const std::string text = readableText({{"project", textOfPath(project.string())}});
    if (::ftruncate(opened_.number(), 0) == 0)
        static_cast<void>(::pwrite(opened_.number(), text.data(), text.size(), 0) < 0);
}

bool SessionLock::claimProject(const fs::path& project)
{
    // Of two that claim it at a time, one is the first. Where that cannot be told, working goes before asking.
    const Descriptor turn = waitForFolder(file_.parent_path(), kPatienceForFolder);
    const bool free = project.empty() || !isOpenElsewhere(project);
    setProject(free ? project : fs::path());
    return free;
}

bool SessionLock::isOpenElsewhere(const fs::path& project) const
{
    std::error_code failed;
    for (fs::directory_iterator file(file_.parent_path(), failed), end; !failed && file != end; file.increment(failed))
        if (isSessionFile(file->path()) && file->path() != file_ && !take(file->path()) &&
            isSameFile(projectIn(file->path()), project))
            return true;
    return false;
}

void SessionLock::removeFile()
{
    std::error_code ignored;
    fs::remove(file_, ignored);
}

} // namespace workbench
