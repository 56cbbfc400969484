#include "oribund/controls/binding/EffectParamObserverEx.h"

namespace oribund
{

namespace
{

constexpr unsigned bitOf(EffectChangeCode code)
{
    return 1u << static_cast<unsigned>(code);
}

// What may alter a value that is shown at the current time, or whether it can be edited.
constexpr unsigned kRefreshingCodes =
    bitOf(EffectChangeCode::ParamSetChanged) | bitOf(EffectChangeCode::ParamValueChanged) |
    bitOf(EffectChangeCode::KeyframesChanged) | bitOf(EffectChangeCode::CurrentTimeMoved) |
    bitOf(EffectChangeCode::FunctionTypeChanged) | bitOf(EffectChangeCode::ParamSetRestored) |
    bitOf(EffectChangeCode::EditabilityChanged);
static_assert(kRefreshingCodes == 0x15CC, "hosts rely on these numbers");
constexpr unsigned kLastRefreshingCode = 12;

} // namespace

bool ParamChangeFilter::isWholesale(const EffectChangeDescription& change)
{
    return (change.flags & EffectChangeDescription::kWholesaleRefresh) != 0;
}

bool ParamChangeFilter::isParamSetChange(const EffectChangeDescription& change)
{
    return change.code == EffectChangeCode::ParamSetChanged || change.code == EffectChangeCode::ParamSetRestored;
}

bool ParamChangeFilter::concerns(const EffectChangeDescription& change, const IdStamp& effectId)
{
    if (change.effect != effectId && !change.effect.isWildcard())
        return false;
    if (change.flags & EffectChangeDescription::kToldByParams)
        return false;
    const auto code = static_cast<unsigned>(change.code);
    return code <= kLastRefreshingCode && (kRefreshingCodes & (1u << code)) != 0;
}

bool ParamChangeFilter::isTimeMove(const EffectChangeDescription& change)
{
    return change.code == EffectChangeCode::CurrentTimeMoved && !isWholesale(change) &&
           (change.flags & EffectChangeDescription::kTimeOnly) != 0;
}

} // namespace oribund
