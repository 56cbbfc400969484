#include "workbench/engine/worker/graph/EffectFolders.h"

#include <cstdlib>
#include <filesystem>
#include <system_error>

namespace workbench
{

namespace
{

constexpr const char* kVariable = "MLT_FREI0R_PLUGIN_PATH";

std::string valueOf(const char* variable)
{
    const char* const value = std::getenv(variable);
    return value ? value : "";
}

/** Where the framework looks by default: a folder that is named takes the place of all these. */
std::string usualFolders()
{
    if (std::string others = valueOf("FREI0R_PATH"); !others.empty())
        return others;
    return "/usr/lib/frei0r-1:/usr/lib64/frei0r-1:/opt/local/lib/frei0r-1:/usr/local/lib/frei0r-1:" + valueOf("HOME") +
           "/.frei0r-1/lib";
}

} // namespace

void addEffectFolder(const std::string& folder)
{
    const std::string before = valueOf(kVariable);
    setenv(kVariable, (folder + ':' + (before.empty() ? usualFolders() : before)).c_str(), 1);
}

std::string ownEffectFolder()
{
    std::error_code error;
    return (std::filesystem::read_symlink("/proc/self/exe", error).parent_path() / "effects").string();
}

} // namespace workbench
