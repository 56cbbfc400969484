#pragma once

#include <sys/types.h>

#include <csignal>
#include <filesystem>
#include <fstream>
#include <vector>

namespace workbench
{

/** The processes that this one has started. */
inline std::vector<pid_t> workers()
{
    std::vector<pid_t> found;
    for (const auto& thread : std::filesystem::directory_iterator("/proc/self/task")) {
        std::ifstream children(thread.path() / "children");
        for (pid_t child = 0; children >> child;)
            found.push_back(child);
    }
    return found;
}

/** From outside. */
inline void sendToWorkers(int signal)
{
    for (const pid_t worker : workers())
        kill(worker, signal);
}

} // namespace workbench
