#pragma once

#include <filesystem>

namespace workbench
{

/** The user's folder for this program's settings: below $XDG_CONFIG_HOME, else below ~/.config. */
std::filesystem::path settingsFolder();

/** The user's folder for what this program must not lose between runs: below $XDG_STATE_HOME, else ~/.local/state. */
std::filesystem::path recoveryFolder();

/** The user's folder for what this program can make again: below $XDG_CACHE_HOME, else below ~/.cache. */
std::filesystem::path cacheFolder();

} // namespace workbench
