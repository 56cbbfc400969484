#include "oribund/host/effects/params/EffectValParam.h"

#include "oribund/host/effects/params/ParamVisitor.h"

#include <algorithm>
#include <array>
#include <utility>

namespace oribund
{

namespace
{

/** A number for every component of a `P`; other values are all alike. */
template <class P>
P allComponents([[maybe_unused]] double number) noexcept
{
    if constexpr (isNumericParam<P>) {
        std::array<double, ParamTraits<P>::kChannels> numbers;
        numbers.fill(number);
        return ParamTraits<P>::join(numbers);
    } else {
        return P();
    }
}

template <class P, class Pick>
P combine(const P& a, const P& b, Pick pick) noexcept
{
    // Some compilers instantiate this for every P, whatever the constraints of its callers; so below.
    if constexpr (isNumericParam<P>) {
        auto numbers = ParamTraits<P>::split(a);
        const auto others = ParamTraits<P>::split(b);
        for (std::size_t i = 0; i < numbers.size(); ++i)
            numbers[i] = pick(numbers[i], others[i]);
        return ParamTraits<P>::join(numbers);
    } else {
        return a;
    }
}

double lesser(double a, double b) noexcept
{
    return b < a ? b : a;
}

double greater(double a, double b) noexcept
{
    return a < b ? b : a;
}

} // namespace

template <class P>
EffectValParam<P>::EffectValParam(ParamInfo info, const P& defaultValue)
    : EffectValParam(std::move(info), defaultValue, allComponents<P>(-Graph1dBase::kMaxValue),
                     allComponents<P>(Graph1dBase::kMaxValue), 0)
{
}

template <class P>
EffectValParam<P>::EffectValParam(ParamInfo info, const P& defaultValue, const P& minimum,
                                  const P& maximum) requires isNumericParam<P>
    : EffectValParam(std::move(info), defaultValue, combine(minimum, maximum, lesser),
                     combine(minimum, maximum, greater), 0)
{
}

template <class P>
EffectValParam<P>::EffectValParam(ParamInfo info, const P& defaultValue, const P& minimum, const P& maximum, int)
    : EffectValParamBase(std::move(info))
    , minimum_(minimum)
    , maximum_(maximum)
    , default_(usableParamValue(defaultValue) ? clamp(defaultValue) : clamp(P()))
    , constant_(*this, default_)
{
    if constexpr (isNumericParam<P>) {
        if (this->info().keyframable)
            setGraph(graph_);
        restGraph(default_);
    }
}

template <class P>
EffectValParam<P>::~EffectValParam()
{
    forgetGraph();
}

template <class P>
P EffectValParam<P>::clamp(const P& value) const noexcept
{
    if constexpr (isNumericParam<P>)
        return combine(combine(value, maximum_, lesser), minimum_, greater);
    else
        return value;
}

template <class P>
P EffectValParam<P>::getValue([[maybe_unused]] double fxTime) const
{
    if constexpr (isNumericParam<P>) {
        if (functionType() == EffectValParamFnType::Keyframed) {
            if constexpr (ParamTraits<P>::kChannels == 1)
                return clamp(ParamTraits<P>::join({graph_.evaluate(fxTime)}));
            else
                return clamp(ParamTraits<P>::join(graph_.evaluate(fxTime)));
        }
    }
    return constant();
}

template <class P>
bool EffectValParam<P>::setConstant(const P& value, ChangeKind kind)
{
    if (!usableParamValue(value))
        return false;
    const P clamped = clamp(value);
    if (clamped == constant())
        return true;
    if (opensChange(kind))
        constant_.preChange(kind);
    store(clamped, kind);
    return true;
}

template <class P>
void EffectValParam<P>::store(const P& value, ChangeKind kind)
{
    if (journal())
        recordConstant(constant(), value, kind);
    restGraph(value);
    constant_.setAlways(value, kind);
}

template <class P>
void EffectValParam<P>::restGraph([[maybe_unused]] const P& value) noexcept
{
    if constexpr (isNumericParam<P>) {
        const auto numbers = ParamTraits<P>::split(value);
        for (std::size_t i = 0; i < numbers.size(); ++i)
            graph_.curve(static_cast<int>(i)).setRestValue(numbers[i]);
    }
}

template <class P>
int EffectValParam<P>::addKeyframeAt(double fxTime, const P& value, ChangeKind kind) requires isNumericParam<P>
{
    if constexpr (isNumericParam<P>) {
        if (functionType() == EffectValParamFnType::Keyframed && usableParamValue(value))
            return graph_.addKeyframeWithValues(fxTime, ParamTraits<P>::split(clamp(value)), kind);
    }
    return -1;
}

template <class P>
bool EffectValParam<P>::setKeyframeValueAt(int index, const P& value, ChangeKind kind) requires isNumericParam<P>
{
    if constexpr (isNumericParam<P>)
        return usableParamValue(value) && graph_.setKeyframeValues(index, ParamTraits<P>::split(clamp(value)), kind);
    return false;
}

template <class P>
void EffectValParam<P>::addFirstKeyframe([[maybe_unused]] double fxTime, [[maybe_unused]] ChangeKind kind)
{
    if constexpr (isNumericParam<P>)
        graph_.addKeyframeWithValues(fxTime, ParamTraits<P>::split(constant()), kind);
}

template <class P>
void EffectValParam<P>::freezeConstant([[maybe_unused]] double fxTime, [[maybe_unused]] ChangeKind kind)
{
    if constexpr (isNumericParam<P>) {
        const P value = getValue(fxTime);
        graph_.removeAllKeyframes(kind);
        if (value != constant())
            store(value, kind);
    }
}

template <class P>
void EffectValParam<P>::accept(ParamVisitor& visitor)
{
    visitor.visit(*this);
}

template <class P>
ParamValue EffectValParam<P>::constantValue() const
{
    return constant();
}

template <class P>
ParamValue EffectValParam<P>::defaultValue() const
{
    return default_;
}

template <class P>
ParamValue EffectValParam<P>::valueAt(double fxTime) const
{
    return getValue(fxTime);
}

template <class P>
bool EffectValParam<P>::setConstantValue(const ParamValue& value, ChangeKind kind)
{
    const P* const own = std::get_if<P>(&value);
    return own && setConstant(*own, kind);
}

template <class P>
bool EffectValParam<P>::restoreConstant(const ParamValue& value, ChangeKind kind)
{
    const P* const own = std::get_if<P>(&value);
    if (!own || !usableParamValue(*own))
        return false;
    if (*own != constant())
        store(*own, kind);
    return true;
}

ORIBUND_FOR_PARAM_TYPES(ORIBUND_DEFINE_FOR_TYPE, EffectValParam)

} // namespace oribund
