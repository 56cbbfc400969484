#pragma once

#include "oribund/host/base/Export.h"
#include "oribund/host/base/LightweightString.h"
#include "oribund/host/edit/Edit.h"
#include "oribund/host/effects/keyframes/KeyframeSet.h"

#include <vector>

namespace oribund
{

class TrackEffects;

/**
 * The keyframes at an edit time, for tooltips and for who does not see them: "Saturation, 00:00:03:12, 45 %, keyframe 2
 * of 5, selected". Of many the first few. Empty without any.
 */
ORIBUND_API WString describeKeyframes(const std::vector<FXKeyframeHelpers::FXKeyframe>& keyframes, double editTime,
                                      const TrackEffects& effects, const EditPtr& edit);

} // namespace oribund
