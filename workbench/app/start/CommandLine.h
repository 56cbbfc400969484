#pragma once

#include <optional>
#include <string>
#include <vector>

namespace workbench
{

/** What the program was called with. */
struct CommandLine {
    enum class Task { Window, Pictures, Export, ListEffects, Help };

    Task task = Task::Window;
    std::vector<std::string> files; ///< media or one project, in the order given
    std::string mediaFolder;        ///< where "Open" starts, and whose media is shown when nothing else is given
    std::string picturesFolder;
    std::string exportPath;
    bool replaceExisting = false;
    std::optional<double> from; ///< seconds
    std::optional<double> to;
    double scale = 0.0; ///< of the interface; 0 leaves it to the desktop
};

struct CommandLineResult {
    CommandLine commandLine;
    std::string fault; ///< for a person: what is wrong with the arguments; empty when nothing is
};

/** `arguments` are those after the program's name. */
CommandLineResult parseCommandLine(const std::vector<std::string>& arguments);

/** What --help prints. */
std::string commandLineHelp();

} // namespace workbench
