#pragma once

#include "workbench/model/EditData.h"
#include "workbench/store/json/JsonText.h"

namespace workbench
{

class Warnings;

/** An effect as it is saved: everything, whether it is installed or not. */
Json toJson(const EffectData& effect);

/** Reads an effect; what cannot be one of its values is left out, with a warning. */
EffectData effectFrom(const Json& json, Warnings& warnings);

/** Pairs of texts, and back. */
Json toJson(const PropertyList& properties);
PropertyList propertiesFrom(const Json& json);

} // namespace workbench
