#pragma once

#include "oribund/host/effects/EffectChange.h"

namespace oribund
{

/** Whether what is told may mean that there are other keyframes than before, or at other times. */
constexpr bool affectsKeyframes(const EffectChangeDescription& change) noexcept
{
    switch (change.code) {
    case EffectChangeCode::ParamSetChanged:
    case EffectChangeCode::KeyframesMoved:
    case EffectChangeCode::KeyframesChanged:
    case EffectChangeCode::FunctionTypeChanged:
    case EffectChangeCode::CurveShapeChanged:
    case EffectChangeCode::ParamSetRestored:
        return true;
    default:
        return (change.flags & EffectChangeDescription::kWholesaleRefresh) != 0;
    }
}

} // namespace oribund
