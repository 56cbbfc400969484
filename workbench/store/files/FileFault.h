#pragma once

#include <filesystem>
#include <string>

namespace workbench
{

/** That an action on a file failed, and why: `action` is a verb, `code` an errno. For a person to read. */
std::string fileFault(const char* action, const std::filesystem::path& path, int code);

/** A path as it stands in a message. */
std::string quotedPath(const std::filesystem::path& path);

} // namespace workbench
