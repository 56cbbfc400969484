#pragma once

#include "workbench/engine/worker/catalogue/RawMetadata.h"
#include "workbench/model/EffectDescription.h"

#include <optional>
#include <string>
#include <vector>

namespace workbench
{

/**
 * A filter as an effect, from its metadata alone. Empty for one that is no effect for picture or sound. Its
 * `blockedBecause` is set when it has settings of which none can be offered.
 */
std::optional<EffectDescription> mapEffect(const RawEffect& raw);

/** Makes the colours opaque that the service takes without an opacity. */
void settleColours(EffectDescription& effect);

/**
 * Takes out the numbers of which the metadata does not say what they are by default. They would have to be guessed, and
 * the effect then does something else than it does by itself.
 */
void leaveOutUnset(EffectDescription& effect, const RawEffect& raw);

/** Why effects of that kind cannot be limited by a mask, a sentence; empty for those that can. */
std::string whyNoMaskByKind(const EffectDescription& effect);

/** What is wrong with a parameter: range, default, demo value, list. Empty when nothing is. */
std::string checkParam(const ParamDescription& param);

/** What is wrong with a description, a line each. */
std::vector<std::string> checkEffect(const EffectDescription& effect);

} // namespace workbench
