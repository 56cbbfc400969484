#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace workbench
{

struct Projection;

/** Most of what this machine has: what runs wild ends before the machine does. Bytes. */
std::uint64_t usualMemoryLimit();

/** What a worker may touch beyond the system's own libraries, fonts and plug-ins. All paths are absolute. */
struct ContainmentRules {
    std::vector<std::string> readable; ///< files, or folders with all that is in them
    std::vector<std::string> writable; ///< files that exist already, or folders in which files may be made and replaced
    bool sound = false;                ///< may talk to the sound server and the sound devices of this machine
    std::uint64_t memoryLimit = usualMemoryLimit(); ///< bytes that the worker may have for itself; 0 for no limit

    bool operator==(const ContainmentRules&) const = default;
};

/** What of the rules is in force. */
struct ContainmentReport {
    bool files = false;            ///< no file is read or written but those of the rules
    bool calls = false;            ///< no network, no other program, no process of its own
    std::vector<std::string> gaps; ///< what is not in force and why, a sentence each; for the log

    bool operator==(const ContainmentReport&) const = default;
};

/**
 * The files and folders that an edit is shown from: its media, and the maps of its wipes, as far as the allow list lets
 * them be used. Sorted, each of them once.
 */
std::vector<std::string> placesOf(const Projection& projection);

/** Whether a worker that was started with these rules can show the edit. Rules can never be loosened afterwards. */
bool covers(const ContainmentRules& rules, const Projection& projection);

/** The same for these files and folders. */
bool covers(const ContainmentRules& rules, const std::vector<std::string>& needed);

} // namespace workbench
