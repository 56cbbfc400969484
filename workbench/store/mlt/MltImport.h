#pragma once

#include "workbench/model/EditData.h"

#include <filesystem>
#include <stop_token>

namespace pugi
{
class xml_node;
}

namespace workbench
{

class EffectCatalogue;
class Warnings;

/**
 * Takes an edit out of MLT XML that another program wrote: its tracks, the clips on them with their filters. Tracks
 * that hold tracks are spread out. What an edit cannot hold (effects on whole tracks, transitions between tracks) is
 * left out, with a warning. Ids are given later. Ends early, with a part of it, where that is asked for.
 */
EditData importMlt(pugi::xml_node mlt, const std::filesystem::path& folder, const EffectCatalogue& catalogue,
                   Warnings& warnings, const std::stop_token& stop = {});

/** A filter as an effect of that segment: what we saved with it, where it has that; else from its properties. Its
   frames are counted from `origin`, a frame of the media. */
EffectData importFilter(pugi::xml_node filter, int origin, const SegmentData& segment, const FormatData& format,
                        const EffectCatalogue& catalogue, Warnings& warnings);

} // namespace workbench
