#include "workbench/store/files/StandardFolders.h"

#include <cstdlib>

namespace workbench
{

namespace
{
constexpr const char* kProgram = "oribund";

/** What the variable names, unless it is unset or relative, which is as good as unset. */
std::filesystem::path baseFolder(const char* variable, const char* belowHome)
{
    if (const char* const named = std::getenv(variable); named && *named == '/')
        return named;
    const char* const home = std::getenv("HOME");
    return std::filesystem::path(home && *home == '/' ? home : "/tmp") / belowHome;
}
} // namespace

std::filesystem::path settingsFolder()
{
    return baseFolder("XDG_CONFIG_HOME", ".config") / kProgram;
}

std::filesystem::path recoveryFolder()
{
    return baseFolder("XDG_STATE_HOME", ".local/state") / kProgram / "recovery";
}

std::filesystem::path cacheFolder()
{
    return baseFolder("XDG_CACHE_HOME", ".cache") / kProgram;
}

} // namespace workbench
