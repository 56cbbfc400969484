#include "workbench/engine/worker/containment/Containment.h"

#include "workbench/engine/worker/containment/CallFence.h"
#include "workbench/engine/worker/containment/FileFence.h"

#include <sys/prctl.h>
#include <sys/resource.h>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <system_error>

namespace workbench
{

namespace
{

// A film, its index and a plug-in need a few; an endless loop that opens files ends here.
constexpr rlim_t kMostDescriptors = 4096;

#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
constexpr bool kSanitized = true;
#else
constexpr bool kSanitized = false;
#endif

bool limit(__rlimit_resource resource, rlim_t most)
{
    rlimit now{};
    if (getrlimit(resource, &now) != 0)
        return false;
    now.rlim_max = std::min(now.rlim_max, most);
    now.rlim_cur = std::min(now.rlim_cur, now.rlim_max);
    return setrlimit(resource, &now) == 0;
}

/** Private data is counted, not address space: shared pictures and what is only reserved cost nothing. */
std::string limitMemory(std::uint64_t bytes)
{
    if (bytes == 0)
        return {};
    if (kSanitized)
        return "Memory is not limited: the sanitizer of this build needs more than there is.";
    return limit(RLIMIT_DATA, bytes) ? "" : "Memory is not limited: " + std::generic_category().message(errno) + ".";
}

} // namespace

ContainmentReport contain(const ContainmentRules& rules)
{
    ContainmentReport report;
    const auto note = [&report](const std::string& gap) {
        if (!gap.empty())
            report.gaps.push_back(gap);
        return gap.empty();
    };
    limit(RLIMIT_CORE, 0); // what it works on is the user's own
    limit(RLIMIT_NOFILE, kMostDescriptors);
    note(limitMemory(rules.memoryLimit));
    if (prctl(PR_SET_NO_NEW_PRIVS, 1, 0, 0, 0) != 0) {
        note("Nothing is fenced off: this kernel does not let a process give up its rights.");
        return report;
    }
    // The second one would refuse calls that the first one is made of.
    report.files = note(fenceFiles(rules));
    report.calls = note(fenceCalls(rules));
    return report;
}

} // namespace workbench
