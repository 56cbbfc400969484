#pragma once

#include "oribund/host/base/Angle.h"
#include "oribund/host/base/ColourData.h"
#include "oribund/host/base/LightweightString.h"
#include "oribund/host/base/ListParam.h"
#include "oribund/host/base/Vector2d.h"
#include "oribund/host/base/VideoInputParam.h"

#include <variant>

namespace oribund
{

/** A value of a parameter of any type; the order of the types is fixed. */
using ParamValue =
    std::variant<double, bool, Angle, ColourData, Vector2d, ListParam<int>, ListParam<String>, VideoInputParam>;

} // namespace oribund
