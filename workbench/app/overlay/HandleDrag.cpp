#include "workbench/app/overlay/HandleDrag.h"

#include "oribund/controls/binding/EffectValParamAccessor.h"
#include "oribund/host/base/Numeric.h"

#include <utility>

namespace workbench
{

using namespace oribund;

HandleDrag::HandleDrag(const FXViewHandle& view, const PictureHandle& handle)
    : FXVobClient(view)
    , handle_(handle)
{
}

double HandleDrag::fxTime() const
{
    return clampNormalisedTime(getNormalisedCurrentTime());
}

bool HandleDrag::mayEdit() const
{
    const auto effect = getEffectPtr();
    const auto param = effect ? effect->findParam(handle_.param) : EffectInstance::ParamPtr();
    return param && canEditParam(*effect, *param);
}

std::optional<ParamValue> HandleDrag::value() const
{
    const auto effect = getEffectPtr();
    const auto param = effect ? effect->findParam(handle_.param) : EffectInstance::ParamPtr();
    return param ? std::optional(param->valueAt(fxTime())) : std::nullopt;
}

void HandleDrag::begin(const PictureHandle& handle, const PictureMapping& mapping)
{
    handle_ = handle;
    mapping_ = mapping;
    original_ = value();
    written_ = false;
    begun_ = true;
    gesture_.begin(getViewedEdit());
}

void HandleDrag::moveBy(const PictureMapping::Pixels& distance)
{
    const auto effect = getEffectPtr();
    if (!begun_ || !effect || !mayEdit())
        return;
    const Vector2d place = handle_.at + mapping_.distanceFromView(distance);
    if (const auto moved = valueAt(handle_, *effect, fxTime(), place, mapping_))
        write(*moved, std::exchange(written_, true) ? ChangeKind::Continuation : ChangeKind::Start);
}

void HandleDrag::finish()
{
    begun_ = false;
    gesture_.finish();
}

void HandleDrag::abort()
{
    const bool isOurs = std::exchange(begun_, false) && !gesture_.isLost();
    // An edit that keeps no journal leaves it to us.
    if (!gesture_.abort() && isOurs && written_ && original_)
        write(*original_, ChangeKind::Single);
}

void HandleDrag::stepBy(const Vector2d& difference)
{
    const std::optional<ParamValue> present = value();
    if (!present || !mayEdit())
        return;
    ParamValue next = *present;
    if (auto* const point = std::get_if<Vector2d>(&next))
        *point = *point + difference;
    else if (auto* const angle = std::get_if<Angle>(&next))
        angle->degrees += difference.x;
    else if (auto* const number = std::get_if<double>(&next))
        *number += difference.x;
    write(next, ChangeKind::Single);
}

void HandleDrag::reset()
{
    const auto effect = getEffectPtr();
    if (effect && mayEdit())
        write(effect->findParam(handle_.param)->defaultValue(), ChangeKind::Single);
}

void HandleDrag::write(const ParamValue& value, ChangeKind kind)
{
    const auto effect = getEffectPtr();
    const auto param = effect ? effect->findParam(handle_.param) : EffectInstance::ParamPtr();
    if (!param)
        return;
    if (param->functionType() == EffectValParamFnType::Keyframed)
        prepareEdit();
    std::visit(
        [&]<class P>(const P& typed) {
            if (const auto own = Kt::dynamicCast<EffectValParam<P>>(param))
                EffectValParamAccessor<P>(*own).setValue(effect, typed, fxTime(), kind);
        },
        value);
}

} // namespace workbench
