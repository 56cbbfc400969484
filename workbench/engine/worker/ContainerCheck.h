#pragma once

#include <string>

namespace workbench
{

enum class Completeness { Unknown, Whole, CutShort };

/**
 * Whether a media file is as long as its own container says: a copy that broke off, or a recording that was never
 * closed. Knows MP4 and its relatives, RIFF (AVI, WAV) and Matroska; Unknown for all others.
 */
Completeness checkContainer(const std::string& path);

} // namespace workbench
