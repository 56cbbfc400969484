#include "workbench/store/files/AtomicFile.h"

#include "workbench/store/files/FileFault.h"
#include "workbench/store/files/FileIdentity.h"

#include <cerrno>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>
#include <vector>

namespace workbench
{

namespace fs = std::filesystem;

AtomicFile::AtomicFile(const fs::path& path)
    : target_(behindLinks(path))
    , file_(target_)
{
    if (file_.error() != 0)
        fail("write", file_.error());
}

AtomicFile::~AtomicFile() = default;

bool AtomicFile::write(std::string_view bytes)
{
    return file_.write(bytes) || fail("write", file_.error());
}

bool AtomicFile::commit()
{
    if (!error_.empty())
        return false;
    const int failed = file_.moveTo(target_);
    return failed == 0 || fail("write", failed);
}

bool AtomicFile::fail(const char* action, int code)
{
    if (error_.empty())
        error_ = fileFault(action, target_, code);
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
        result.error = fileFault("read", path, code);
        return result;
    };
    if (!file || ::fstat(file.number(), &present) != 0)
        return failed(errno);
    if (!S_ISREG(present.st_mode))
        return failed(S_ISDIR(present.st_mode) ? EISDIR : EINVAL);

    std::vector<char> piece(1 << 18);
    for (;;) {
        const ssize_t got = ::read(file.number(), piece.data(), piece.size());
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
