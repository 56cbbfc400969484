#include "workbench/engine/worker/containment/SystemPlaces.h"

#include <cstdlib>
#include <string_view>

namespace workbench
{

namespace
{

std::string variable(const char* name)
{
    const char* const value = std::getenv(name);
    return value ? value : "";
}

/** A folder of the XDG standard: its variable, else its usual place in the home folder. */
std::string userFolder(const char* name, const char* usual)
{
    const std::string set = variable(name);
    return set.starts_with('/') ? set : variable("HOME") + usual;
}

void addList(std::vector<std::string>& places, std::string_view paths)
{
    while (!paths.empty()) {
        const std::size_t colon = paths.find(':');
        const std::string_view path = paths.substr(0, colon);
        paths.remove_prefix(colon == std::string_view::npos ? paths.size() : colon + 1);
        // A relative one means another place from every folder; the root would allow everything.
        if (path.starts_with('/') && path.size() > 1)
            places.emplace_back(path);
    }
}

} // namespace

std::vector<std::string> readablePlaces(bool sound)
{
    std::vector<std::string> places{
        "/usr", "/lib", "/lib64", "/opt", "/nix/store", "/gnu/store", "/etc/ld.so.cache", "/etc/fonts",
        "/etc/alternatives", "/etc/localtime", "/etc/vulkan", "/etc/OpenCL", "/etc/drirc", "/var/cache/fontconfig",
        // What a process asks of itself and of the machine's processors and cards.
        "/proc/self", "/proc/cpuinfo", "/proc/meminfo", "/proc/stat", "/proc/sys/kernel", "/proc/sys/vm",
        "/sys/devices/system/cpu", "/sys/devices/pci0000:00", "/sys/dev/char", "/sys/bus/pci"};
    for (const char* const name : {"LD_LIBRARY_PATH", "MLT_REPOSITORY", "MLT_DATA", "MLT_PROFILES_PATH",
                                   "MLT_PRESETS_PATH", "MLT_FREI0R_PLUGIN_PATH", "FREI0R_PATH"})
        addList(places, variable(name));

    const std::string home = variable("HOME");
    const std::string config = userFolder("XDG_CONFIG_HOME", "/.config");
    const std::string data = userFolder("XDG_DATA_HOME", "/.local/share");
    const std::string cache = userFolder("XDG_CACHE_HOME", "/.cache");
    for (const std::string& path :
         {home + "/.fonts", home + "/.frei0r-1", config + "/fontconfig", data + "/fonts", cache + "/fontconfig"})
        places.push_back(path);
    if (!sound)
        return places;

    const std::string runtime = variable("XDG_RUNTIME_DIR");
    for (const std::string& path :
         {std::string("/etc/alsa"), std::string("/etc/asound.conf"), std::string("/etc/pulse"),
          std::string("/etc/pipewire"), std::string("/etc/machine-id"), home + "/.asoundrc", config + "/alsa",
          config + "/pulse", config + "/pipewire", home + "/.pulse-cookie"})
        places.push_back(path);
    if (runtime.starts_with('/'))
        places.push_back(runtime + "/pulse");
    return places;
}

std::vector<std::string> devicePlaces(bool sound)
{
    std::vector<std::string> places{"/dev/null", "/dev/zero", "/dev/full", "/dev/random", "/dev/urandom", "/dev/dri"};
    if (sound)
        places.emplace_back("/dev/snd");
    return places;
}

} // namespace workbench
