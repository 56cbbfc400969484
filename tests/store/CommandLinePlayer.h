#pragma once

#include <cstdlib>
#include <filesystem>
#include <string>

namespace test
{

inline bool run(const std::string& command)
{
    return std::system((command + " >/dev/null 2>&1").c_str()) == 0;
}

inline bool hasPlayer()
{
    return run("command -v melt") && run("command -v ffmpeg");
}

/** Has melt render the pictures of a project into a file, from another folder, so that only the project can say where
    its media lies. */
inline bool play(const std::filesystem::path& project, const std::filesystem::path& to, const std::string& kind)
{
    const std::string command = "cd / && SDL_AUDIODRIVER=dummy timeout -k 1 20 melt '" + project.string() +
                                "' -consumer avformat:'" + to.string() + "' an=1 real_time=-1 " + kind;
    // On a busy machine the player's encoder sometimes never begins; it then waits for ever or writes nothing.
    for (int attempt = 0; attempt < 3; ++attempt) {
        std::error_code none;
        if (run(command) && std::filesystem::file_size(to, none) > 0 && !none)
            return true;
    }
    return false;
}

} // namespace test
