#include "workbench/app/start/CommandLine.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <functional>

namespace workbench
{

namespace
{

struct Option {
    const char* name;
    const char* argument; ///< null for an option that takes none
    const char* help;
    std::function<std::string(CommandLine&, const std::string&)> apply; ///< the fault, or empty
};

std::optional<double> numberOf(const std::string& text)
{
    double value = 0.0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
    if (error != std::errc() || end != text.data() + text.size() || !std::isfinite(value))
        return std::nullopt;
    return value;
}

std::string setTask(CommandLine& line, CommandLine::Task task)
{
    if (line.task != CommandLine::Task::Window && line.task != task && task != CommandLine::Task::Help)
        return "Only one of --pictures, --export and --list-effects can be done at a time.";
    if (line.task != CommandLine::Task::Help)
        line.task = task;
    return {};
}

std::string setSeconds(std::optional<double>& seconds, const std::string& text)
{
    seconds = numberOf(text);
    return seconds && *seconds >= 0.0 ? std::string() : "\"" + text + "\" is not a time in seconds.";
}

const std::vector<Option>& options()
{
    using Task = CommandLine::Task;
    static const std::vector<Option> theOptions{
        {"--pictures", "DIR", "write pictures of the window and of the effect panels, without a display",
         [](CommandLine& line, const std::string& value) {
             line.picturesFolder = value;
             return setTask(line, Task::Pictures);
         }},
        {"--export", "FILE", "render what is opened into a file, without a window",
         [](CommandLine& line, const std::string& value) {
             line.exportPath = value;
             return setTask(line, Task::Export);
         }},
        {"--from", "SECONDS", "where the export begins",
         [](CommandLine& line, const std::string& value) { return setSeconds(line.from, value); }},
        {"--to", "SECONDS", "where the export ends",
         [](CommandLine& line, const std::string& value) { return setSeconds(line.to, value); }},
        {"--replace", nullptr, "let the export replace a file that is there",
         [](CommandLine& line, const std::string&) {
             line.replaceExisting = true;
             return std::string();
         }},
        {"--list-effects", nullptr, "print the effects that are installed",
         [](CommandLine& line, const std::string&) { return setTask(line, Task::ListEffects); }},
        {"--media", "DIR", "the folder in which \"Open\" starts",
         [](CommandLine& line, const std::string& value) {
             line.mediaFolder = value;
             return std::string();
         }},
        {"--scale", "N", "size of the interface, 1 to 4",
         [](CommandLine& line, const std::string& value) {
             line.scale = numberOf(value).value_or(0.0);
             const bool fits = line.scale >= 1.0 && line.scale <= 4.0;
             return fits ? std::string()
                         : "\"" + value + "\" is not a scale between 1 and 4; below 1 texts cannot be read any more.";
         }},
        {"--help", nullptr, "print this",
         [](CommandLine& line, const std::string&) { return setTask(line, Task::Help); }},
    };
    return theOptions;
}

const Option* findOption(const std::string& name)
{
    for (const Option& option : options())
        if (name == option.name)
            return &option;
    return nullptr;
}

std::string faultOf(const CommandLine& line)
{
    if ((line.from || line.to) && line.task != CommandLine::Task::Export)
        return "--from and --to belong to --export.";
    if (line.replaceExisting && line.task != CommandLine::Task::Export)
        return "--replace belongs to --export.";
    if (line.from && line.to && *line.to <= *line.from)
        return "--to must be later than --from.";
    if (line.task == CommandLine::Task::Export && line.files.empty())
        return "--export needs media or a project to export.";
    return {};
}

} // namespace

CommandLineResult parseCommandLine(const std::vector<std::string>& arguments)
{
    CommandLineResult result;
    bool filesOnly = false;
    for (std::size_t i = 0; i < arguments.size() && result.fault.empty(); ++i) {
        std::string name = arguments[i];
        if (name == "--" && !filesOnly) {
            filesOnly = true;
            continue;
        }
        if (filesOnly || !name.starts_with('-') || name == "-") {
            result.commandLine.files.push_back(name);
            continue;
        }
        std::optional<std::string> value;
        if (const std::size_t equals = name.find('='); equals != std::string::npos) {
            value = name.substr(equals + 1);
            name.resize(equals);
        }
        const Option* const option = findOption(name);
        if (option && option->argument && !value && i + 1 < arguments.size())
            value = arguments[++i];
        if (!option)
            result.fault = "There is no option " + name + ".";
        else if (!option->argument && value)
            result.fault = name + " takes no value.";
        else if (option->argument && (!value || value->empty()))
            result.fault = name + " needs a value: " + option->argument + ".";
        else
            result.fault = option->apply(result.commandLine, value.value_or(""));
    }
    if (result.fault.empty() && result.commandLine.task != CommandLine::Task::Help)
        result.fault = faultOf(result.commandLine);
    return result;
}

std::string commandLineHelp()
{
    std::string text = "Usage: oribund-workbench [OPTION]... [FILE]...\n"
                       "Opens media files, one after the other, or a project.\n\n";
    for (const Option& option : options()) {
        std::string line = std::string("  ") + option.name;
        if (option.argument)
            line += std::string(" ") + option.argument;
        line.resize(std::max<std::size_t>(line.size() + 2, 22), ' ');
        text += line + option.help + "\n";
    }
    return text;
}

} // namespace workbench
