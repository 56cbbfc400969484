#pragma once

#include "workbench/model/EditData.h"

#include <filesystem>
#include <string>

namespace pugi
{
class xml_node;
}

namespace workbench
{

/** A text of a document in valid UTF-8, which a document can get round with references to characters. */
std::string validText(const char* text);

/** The text of an element's property; empty when there is none. */
std::string propertyOf(pugi::xml_node element, const char* name);

/** A position or length: a number of frames, or hours:minutes:seconds with a fraction or frames. */
int frameOf(const std::string& text, const FormatData& format, int fallback);

/** The frame of its media from which a clip is used: what uses the clip counts from there. */
int firstFrameOf(pugi::xml_node clip, const FormatData& format);

/** How fast a clip is played; 1 for one that does not say, or that is played backwards. */
double speedOf(pugi::xml_node clip);

/** What a `producer` or `chain` of MLT XML shows, as far as the file says. Relative paths begin at `root`. */
MediaInfo mediaOf(pugi::xml_node producer, const std::filesystem::path& root, const FormatData& format);

} // namespace workbench
