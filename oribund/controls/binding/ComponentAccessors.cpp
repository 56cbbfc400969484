#include "oribund/controls/binding/ComponentAccessors.h"

#include "oribund/host/base/NumberFormat.h"
#include "oribund/host/base/Numeric.h"
#include "oribund/host/effects/EffectInstance.h"

namespace oribund
{

template <class NumberAccessor>
std::optional<WString> NumberTextAccessor<NumberAccessor>::getValue(const Kt::Ptr<EffectInstance>& effect, double time)
{
    const std::optional<double> number = number_.getValue(effect, time);
    return number ? std::optional<WString>(NumberFormat::plain(*number)) : std::nullopt;
}

template <class NumberAccessor>
bool NumberTextAccessor<NumberAccessor>::setValue(const Kt::Ptr<EffectInstance>& effect, const WString& text,
                                                  double time, ChangeKind kind)
{
    const auto number = reinterpretValType<double>(text);
    return number && number_.setValue(effect, *number, time, kind);
}

template <class P>
auto ComponentAccessor<P>::numbers(const Kt::Ptr<EffectInstance>& effect, double time) -> std::optional<Numbers>
{
    const auto whole = whole_.getValue(effect, time);
    const bool known = component_ < static_cast<unsigned>(ParamTraits<P>::kChannels);
    return whole && known ? std::optional<Numbers>(ParamTraits<P>::split(*whole)) : std::nullopt;
}

template <class P>
std::optional<double> ComponentAccessor<P>::getValue(const Kt::Ptr<EffectInstance>& effect, double time)
{
    const auto parts = numbers(effect, time);
    return parts ? std::optional<double>((*parts)[component_]) : std::nullopt;
}

template <class P>
std::optional<P> ComponentAccessor<P>::wholeWith(const Kt::Ptr<EffectInstance>& effect, double value, double time)
{
    auto parts = numbers(effect, time);
    if (!parts)
        return std::nullopt;
    (*parts)[component_] = value;
    return ParamTraits<P>::join(*parts);
}

template <class P>
bool ComponentAccessor<P>::setValue(const Kt::Ptr<EffectInstance>& effect, double value, double time, ChangeKind kind)
{
    const auto whole = wholeWith(effect, value, time);
    return whole && whole_.setValue(effect, *whole, time, kind);
}

template <class P>
int ComponentAccessor<P>::addKeyframe(const Kt::Ptr<EffectInstance>& effect, double value, double time, ChangeKind kind)
{
    const auto whole = wholeWith(effect, value, time);
    return whole ? whole_.addKeyframe(effect, *whole, time, kind) : -1;
}

template class ComponentAccessor<ColourData>;
template class ComponentAccessor<Vector2d>;
template class NumberTextAccessor<EffectValParamAccessor<double>>;
template class NumberTextAccessor<ColCompAccessor<double>>;
template class NumberTextAccessor<PosAccessor>;

} // namespace oribund
