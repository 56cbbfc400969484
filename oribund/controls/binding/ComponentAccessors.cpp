#include "oribund/controls/binding/ComponentAccessors.h"

#include "oribund/controls/binding/ColourLevelAccessor.h"
#include "oribund/host/base/Numeric.h"
#include "oribund/host/base/text/NumberFormat.h"
#include "oribund/host/effects/EffectInstance.h"

namespace oribund
{

template <class NumberAccessor>
std::optional<WString> NumberTextAccessor<NumberAccessor>::getValue(const Kt::Ptr<EffectInstance>& effect,
                                                                    double fxTime)
{
    const std::optional<double> number = number_.getValue(effect, fxTime);
    return number ? std::optional<WString>(NumberFormat::plain(*number)) : std::nullopt;
}

template <class NumberAccessor>
bool NumberTextAccessor<NumberAccessor>::setValue(const Kt::Ptr<EffectInstance>& effect, const WString& text,
                                                  double fxTime, ChangeKind kind)
{
    const auto number = reinterpretValType<double>(text);
    return number && number_.setValue(effect, *number, fxTime, kind);
}

template <class P>
auto ComponentAccessor<P>::numbers(const Kt::Ptr<EffectInstance>& effect, double fxTime) -> std::optional<Numbers>
{
    const auto whole = whole_.getValue(effect, fxTime);
    const bool known = component_ < static_cast<unsigned>(ParamTraits<P>::kChannels);
    return whole && known ? std::optional<Numbers>(ParamTraits<P>::split(*whole)) : std::nullopt;
}

template <class P>
std::optional<double> ComponentAccessor<P>::getValue(const Kt::Ptr<EffectInstance>& effect, double fxTime)
{
    const auto parts = numbers(effect, fxTime);
    return parts ? std::optional<double>((*parts)[component_]) : std::nullopt;
}

template <class P>
std::optional<P> ComponentAccessor<P>::wholeWith(const Kt::Ptr<EffectInstance>& effect, double value, double fxTime)
{
    auto parts = numbers(effect, fxTime);
    if (!parts)
        return std::nullopt;
    (*parts)[component_] = value;
    return ParamTraits<P>::join(*parts);
}

template <class P>
bool ComponentAccessor<P>::setValue(const Kt::Ptr<EffectInstance>& effect, double value, double fxTime, ChangeKind kind)
{
    const auto whole = wholeWith(effect, value, fxTime);
    return whole && whole_.setValue(effect, *whole, fxTime, kind);
}

template <class P>
int ComponentAccessor<P>::addKeyframe(const Kt::Ptr<EffectInstance>& effect, double value, double fxTime,
                                      ChangeKind kind)
{
    const auto whole = wholeWith(effect, value, fxTime);
    return whole ? whole_.addKeyframe(effect, *whole, fxTime, kind) : -1;
}

std::optional<double> ColourLevelAccessor::getValue(const Kt::Ptr<EffectInstance>& effect, double fxTime)
{
    const auto whole = whole_.getValue(effect, fxTime);
    return whole ? std::optional(levelOf(*whole)) : std::nullopt;
}

bool ColourLevelAccessor::setValue(const Kt::Ptr<EffectInstance>& effect, double level, double fxTime, ChangeKind kind)
{
    const auto whole = whole_.getValue(effect, fxTime);
    return whole && whole_.setValue(effect, withLevel(*whole, level), fxTime, kind);
}

template class ComponentAccessor<ColourData>;
template class ComponentAccessor<Vector2d>;
template class NumberTextAccessor<EffectValParamAccessor<double>>;
template class NumberTextAccessor<ColCompAccessor<double>>;
template class NumberTextAccessor<PosAccessor>;
template class NumberTextAccessor<ColourLevelAccessor>;

} // namespace oribund
