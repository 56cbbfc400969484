#include "workbench/engine/worker/containment/FileFence.h"

#include "workbench/engine/protocol/ContainmentRules.h"
#include "workbench/engine/worker/containment/SystemPlaces.h"
#include "workbench/system/Descriptor.h"

#include <fcntl.h>
#include <linux/landlock.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <cerrno>
#include <cstdint>
#include <filesystem>
#include <system_error>
#include <vector>

namespace workbench
{

namespace
{

using Access = std::uint64_t;

// The rights that the kernel learned to tell apart later than the oldest headers on which this is built.
constexpr Access kTruncate = 1U << 14;
constexpr Access kDeviceControl = 1U << 15;

constexpr Access kFirstRights = (1U << 13) - 1; // all that the first version knew
constexpr Access kMoveBetweenFolders = 1U << 13;

constexpr Access kRead = LANDLOCK_ACCESS_FS_READ_FILE | LANDLOCK_ACCESS_FS_READ_DIR;
constexpr Access kUseDevice = kRead | LANDLOCK_ACCESS_FS_WRITE_FILE | kDeviceControl;
constexpr Access kWrite =
    kRead | LANDLOCK_ACCESS_FS_WRITE_FILE | kTruncate | LANDLOCK_ACCESS_FS_MAKE_REG | LANDLOCK_ACCESS_FS_REMOVE_FILE;
constexpr Access kOfFiles = LANDLOCK_ACCESS_FS_EXECUTE | LANDLOCK_ACCESS_FS_WRITE_FILE | LANDLOCK_ACCESS_FS_READ_FILE |
                            kTruncate | kDeviceControl;

/** As the newest kernel takes it; an older one is told a shorter length. */
struct RulesetAttributes {
    Access files = 0;
    std::uint64_t network = 0;
    std::uint64_t scopes = 0;
};

constexpr std::uint64_t kBindAndConnect = 3;
constexpr std::uint64_t kAbstractSocketsAndSignals = 3;

/** The attributes that a version of the interface has, and how long it takes them to be. */
std::pair<RulesetAttributes, std::size_t> attributesOf(long version)
{
    RulesetAttributes all;
    all.files = kFirstRights;
    if (version >= 2)
        all.files |= kMoveBetweenFolders;
    if (version >= 3)
        all.files |= kTruncate;
    if (version >= 5)
        all.files |= kDeviceControl;
    if (version < 4)
        return {all, sizeof all.files};
    all.network = kBindAndConnect;
    if (version < 6)
        return {all, sizeof all.files + sizeof all.network};
    all.scopes = kAbstractSocketsAndSignals;
    return {all, sizeof all};
}

/** What is not there cannot be allowed, and need not be. */
bool allowPlace(const Descriptor& ruleset, const std::string& path, Access access)
{
    const Descriptor place(open(path.c_str(), O_PATH | O_CLOEXEC));
    struct stat about = {};
    if (!place || fstat(place.number(), &about) != 0)
        return errno == ENOENT || errno == EACCES || errno == ENOTDIR;
    landlock_path_beneath_attr rule{};
    rule.parent_fd = place.number();
    rule.allowed_access = S_ISDIR(about.st_mode) ? access : access & kOfFiles;
    return syscall(SYS_landlock_add_rule, ruleset.number(), LANDLOCK_RULE_PATH_BENEATH, &rule, 0U) == 0;
}

bool allowPlaces(const Descriptor& ruleset, const std::vector<std::string>& paths, Access access)
{
    bool good = true;
    for (const std::string& path : paths)
        good = allowPlace(ruleset, path, access) && good;
    return good;
}

bool hasOtherThreads()
{
    std::error_code error;
    const std::filesystem::directory_iterator threads("/proc/self/task", error);
    return !error && std::distance(begin(threads), end(threads)) > 1;
}

std::string problem(const std::string& why)
{
    return "Files are not fenced off: " + why + '.';
}

} // namespace

std::string fenceFiles(const ContainmentRules& rules)
{
    const long version = syscall(SYS_landlock_create_ruleset, nullptr, std::size_t{0}, LANDLOCK_CREATE_RULESET_VERSION);
    if (version < 1)
        return problem("this kernel has no Landlock, or it is switched off");
    const auto [attributes, size] = attributesOf(version);
    const Descriptor ruleset(static_cast<int>(syscall(SYS_landlock_create_ruleset, &attributes, size, 0U)));
    if (!ruleset)
        return problem(std::generic_category().message(errno));

    bool good = allowPlaces(ruleset, rules.readable, kRead & attributes.files);
    good = allowPlaces(ruleset, rules.writable, kWrite & attributes.files) && good;
    good = allowPlaces(ruleset, readablePlaces(rules.sound), kRead & attributes.files) && good;
    good = allowPlaces(ruleset, devicePlaces(rules.sound), kUseDevice & attributes.files) && good;
    if (!good)
        return problem(std::generic_category().message(errno));
    if (syscall(SYS_landlock_restrict_self, ruleset.number(), 0U) != 0)
        return problem(std::generic_category().message(errno));
    if (hasOtherThreads())
        return "Files are fenced off from a part of the work only: other threads run already.";
    return version < 3 ? "Files that must not be written can be cut short: this kernel's Landlock is an old one." : "";
}

} // namespace workbench
