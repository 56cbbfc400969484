#pragma once

#include "oribund/host/effects/params/EffectValParamBase.h"
#include "workbench/model/EditData.h"

namespace workbench
{

struct ParamDescription;

/** A parameter as its description says, with its default. Null where the description has no usable default or range. */
oribund::Kt::Ptr<oribund::EffectValParamBase> makeParam(const ParamDescription& description, oribund::ParamInfo info);

/** A parameter's value as a plain one. */
PlainValue plainOf(const oribund::ParamValue& value);

/**
 * A plain value as one of a parameter: of the same type as `model`, from which the choices of a list are taken. False,
 * and `model` as it was, where the two do not go together.
 */
bool assignPlain(oribund::ParamValue& model, const PlainValue& plain);

/** A parameter's whole setting. */
ParamData dataOf(const oribund::EffectValParamBase& param);

/** Gives the parameter that setting, without a record for undo. What does not fit its type is left out. */
void restoreParam(oribund::EffectValParamBase& param, const ParamData& data);

} // namespace workbench
