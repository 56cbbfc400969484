#pragma once

#include "oribund/host/effects/EffectChange.h"

namespace oribund
{

/** Whether what is told may mean that effects have come, gone, or been replaced. */
constexpr bool affectsEffects(const EffectChangeDescription& change) noexcept
{
    return change.code == EffectChangeCode::ParamSetChanged || change.code == EffectChangeCode::ParamSetRestored ||
           (change.flags & EffectChangeDescription::kWholesaleRefresh) != 0;
}

/** Whether what is told may mean that there are other keyframes than before, or at other times. */
constexpr bool affectsKeyframes(const EffectChangeDescription& change) noexcept
{
    switch (change.code) {
    case EffectChangeCode::KeyframesMoved:
    case EffectChangeCode::KeyframesChanged:
    case EffectChangeCode::FunctionTypeChanged:
    case EffectChangeCode::CurveShapeChanged:
        return true;
    default:
        return affectsEffects(change);
    }
}

} // namespace oribund
