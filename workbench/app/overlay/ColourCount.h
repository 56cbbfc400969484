#pragma once

#include "oribund/host/base/Colour.h"
#include "oribund/host/edit/iFrameStatistics.h"
#include "workbench/engine/protocol/FrameImage.h"

#include <array>

namespace workbench
{

/** How the colours of a picture are distributed: hue, saturation and luminance, in the order of ColourAxis. */
using ColourCount = std::array<oribund::iFrameStatistics::Histogram, 3>;

/** Counts each pixel by how opaque it is. */
ColourCount countColours(const FrameImage& picture);

/** The colour of a pixel, which lies within the picture. */
oribund::Colour colourAt(const FrameImage& picture, int x, int y);

} // namespace workbench
