#pragma once

#include "workbench/model/EditData.h"

#include <memory>
#include <string_view>

namespace workbench
{

struct EffectDescription;

/**
 * The mask of an effect: a shape, inside which the effect is seen. It is an effect of its own, with parameters that can
 * be keyframed, and is in no list of effects: it belongs to the effect that it limits.
 *
 * Centre is in parts of the frame, (0, 0) its top left corner. Width and Height are the whole shape's, in percent of
 * the frame's: in a frame of 1600 by 900 square pixels a circle is 9 % wide and 16 % high. Angle turns the shape
 * clockwise, in degrees, without changing its form. From its edge inwards the shape fades in; Softness is how far, in
 * percent of the way to its centre. The triangle points downwards at an angle of 0.
 */
std::shared_ptr<const EffectDescription> maskDescription();

inline constexpr std::string_view kMaskService = "mask";

/** The properties of a mask. */
namespace mask
{
inline constexpr char kShape[] = "shape";
inline constexpr char kCentre[] = "centre";
inline constexpr char kWidth[] = "width";
inline constexpr char kHeight[] = "height";
inline constexpr char kAngle[] = "angle";
inline constexpr char kSoftness[] = "softness";
inline constexpr char kInvert[] = "invert";
} // namespace mask

/** A mask as it is when it is added. */
EffectData newMask(ObjectId id);

/** Whether the data can be the mask of an effect. */
bool isMask(const EffectData& data);

} // namespace workbench
