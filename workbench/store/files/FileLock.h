#pragma once

#include "workbench/system/Descriptor.h"

#include <chrono>
#include <filesystem>

namespace workbench
{

enum class LockOutcome {
    Held,
    Taken,      ///< another holds it, or has cleared the name away
    Unavailable ///< this disk has no locks, or the file cannot be used; errno says why
};

/**
 * Locks an open file or folder for as long as the descriptor is open, without waiting. The system gives up the lock
 * however the process ends: what is not locked any more belongs to nobody. `path` is the name it was opened by, which
 * must still be its own.
 */
LockOutcome tryLock(int descriptor, const std::filesystem::path& path);

/** Locks a folder for as long as the descriptor is open. None when it is still taken, or unusable, after that time. */
Descriptor waitForFolder(const std::filesystem::path& folder, std::chrono::milliseconds patience);

} // namespace workbench
