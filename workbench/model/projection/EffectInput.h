#pragma once

#include "workbench/model/projection/Projection.h"

#include <optional>
#include <string_view>

namespace workbench
{

/** What an effect gets to work on at a time, as an edit of its own. */
struct EffectInput {
    Projection edit; ///< one clip by itself, with the effects that come before
    int frame = 0;   ///< of it

    bool operator==(const EffectInput&) const = default;
};

/**
 * The input of the effect with that filter id, at a frame of the edit. Nothing when no clip that is at work at that
 * frame has the effect.
 */
std::optional<EffectInput> inputOf(const Projection& whole, std::string_view effect, int frame);

} // namespace workbench
