// The file of preferences: whatever is in it, choices can be read, made and found again.
#include "workbench/store/files/FilePreferences.h"

#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <unistd.h>

namespace
{

namespace fs = std::filesystem;

void require(bool kept)
{
    if (!kept)
        std::abort();
}

/** A folder of this process's own, in memory where there is such a place. */
const fs::path& folder()
{
    static const fs::path made = [] {
        const fs::path base = fs::exists("/dev/shm") ? fs::path("/dev/shm") : fs::temp_directory_path();
        const fs::path path = base / ("oribund-fuzz-" + std::to_string(::getpid()));
        fs::create_directories(path);
        std::atexit([] {
            std::error_code ignored;
            fs::remove_all(folder(), ignored);
        });
        return path;
    }();
    return made;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const fs::path path = folder() / "p.json";
    std::ofstream(path, std::ios::binary)
        .write(reinterpret_cast<const char*>(data), static_cast<std::streamsize>(size));
    double stored = 0.0;
    {
        workbench::FilePreferences prefs(path);
        prefs.getPreference("a", 1);
        prefs.getPreference("a", true);
        prefs.getPreference("a", oribund::String("x"));
        stored = prefs.getPreference("b", 0.5);
        require(prefs.setPreference("c", 12.25));
    }
    workbench::FilePreferences again(path);
    require(again.takeProblem().empty());
    require(again.getPreference("c", 0.0) == 12.25);
    require(again.getPreference("b", 0.5) == stored);
    std::error_code ignored;
    fs::remove(path.string() + ".broken-1", ignored);
    return 0;
}
