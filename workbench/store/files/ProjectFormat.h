#pragma once

namespace workbench::format
{

/** The version of the project files that are written: 2 knows masks, and names of effects. A file of a higher one is
    refused. */
inline constexpr int kVersion = 2;

// Properties in which our own data rides along: the first three in the tractor that is the whole edit, the others in a
// track's playlist, a segment's producer and an effect's filter.
inline constexpr const char* kVersionProperty = "oribund:version";
inline constexpr const char* kEditProperty = "oribund:edit";
inline constexpr const char* kViewProperty = "oribund:view";
inline constexpr const char* kTrackProperty = "oribund:track";
inline constexpr const char* kSegmentProperty = "oribund:segment";
inline constexpr const char* kEffectProperty = "oribund:effect";
/** In a filter of a mask: the effect that it belongs to, from which it is made again. */
inline constexpr const char* kPartProperty = "oribund:part-of";

} // namespace workbench::format
