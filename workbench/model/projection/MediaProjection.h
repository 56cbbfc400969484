#pragma once

#include "workbench/model/MediaInfo.h"
#include "workbench/model/projection/Projection.h"

namespace workbench
{

/** The picture of a media file by itself, in its own shape, as an edit of that many frames a second; without sound. */
Projection projectMedia(const MediaInfo& media, int fpsNumerator, int fpsDenominator);

} // namespace workbench
