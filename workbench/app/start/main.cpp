#include "workbench/app/start/Application.h"
#include "workbench/app/start/CommandLine.h"

#include <cstdio>

int main(int argc, char** argv)
{
    using namespace workbench;
    const std::vector<std::string> arguments(argv + 1, argv + argc);
    const CommandLineResult parsed = parseCommandLine(arguments);
    if (!parsed.fault.empty()) {
        std::fprintf(stderr, "%s\nTry --help.\n", parsed.fault.c_str());
        return 2;
    }
    if (parsed.commandLine.task == CommandLine::Task::Help) {
        std::fputs(commandLineHelp().c_str(), stdout);
        return 0;
    }
    return runApplication(parsed.commandLine, argc, argv);
}
