#pragma once

#include "workbench/model/EditData.h"
#include "workbench/model/EffectDescription.h"

namespace workbench
{

/** A demo value as a parameter's constant. */
inline PlainValue plainValue(const ParamDescription& param, const DemoValue& demo)
{
    if (const double* number = std::get_if<double>(&demo))
        return *number;
    if (const auto* colour = std::get_if<std::array<double, 4>>(&demo))
        return *colour;
    if (const auto* point = std::get_if<std::array<double, 2>>(&demo))
        return *point;
    const int item = std::get<int>(demo);
    if (param.kind == ParamKind::Bool)
        return item != 0;
    return param.items.at(static_cast<std::size_t>(item)).raw;
}

} // namespace workbench
