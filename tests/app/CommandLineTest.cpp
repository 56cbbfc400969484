#include "workbench/app/start/CommandLine.h"

#include <gtest/gtest.h>

namespace workbench
{
namespace
{

using Task = CommandLine::Task;

TEST(CommandLine, FilesAndOptionsMayBeMixed)
{
    const auto [line, fault] = parseCommandLine({"a.mp4", "--export", "out.mp4", "--from=1.5", "--to", "4", "b.mp4"});
    EXPECT_EQ(fault, "");
    EXPECT_EQ(line.task, Task::Export);
    EXPECT_EQ(line.files, (std::vector<std::string>{"a.mp4", "b.mp4"}));
    EXPECT_EQ(line.exportPath, "out.mp4");
    EXPECT_EQ(line.from, 1.5);
    EXPECT_EQ(line.to, 4.0);

    const CommandLine dashed = parseCommandLine({"--scale", "2", "--", "--help", "--"}).commandLine;
    EXPECT_EQ(dashed.task, Task::Window);
    EXPECT_EQ(dashed.scale, 2.0);
    EXPECT_EQ(dashed.files, (std::vector<std::string>{"--help", "--"}));
    EXPECT_EQ(parseCommandLine({"--help", "--from", "3"}).fault, "");
    EXPECT_EQ(parseCommandLine({"--export", "x.mp4", "--help"}).commandLine.task, Task::Help);
}

TEST(CommandLine, WrongUseIsNamed)
{
    const std::pair<std::vector<std::string>, const char*> wrong[] = {
        {{"--frob"}, "--frob"},
        {{"--export"}, "--export needs"},
        {{"--pictures="}, "--pictures needs"},
        {{"--list-effects=3"}, "takes no value"},
        {{"--scale", "9"}, "\"9\""},
        {{"--scale", "nan"}, "\"nan\""},
        {{"--scale", "0.9"}, "\"0.9\""},
        {{"--scale", "1x"}, "\"1x\""},
        {{"a.mp4", "--export", "b.mp4", "--from", "-1"}, "\"-1\""},
        {{"a.mp4", "--export", "b.mp4", "--from", "4", "--to", "4"}, "later"},
        {{"a.mp4", "--from", "4"}, "belong"},
        {{"a.mp4", "--replace"}, "belongs"},
        {{"--export", "b.mp4"}, "needs media"},
        {{"--list-effects", "--pictures", "p"}, "Only one"},
    };
    for (const auto& [arguments, named] : wrong)
        EXPECT_NE(parseCommandLine(arguments).fault.find(named), std::string::npos)
            << arguments.front() << ": " << parseCommandLine(arguments).fault;
}

} // namespace
} // namespace workbench
