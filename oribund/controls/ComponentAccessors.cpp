#include "oribund/controls/ComponentAccessors.h"

#include "oribund/host/base/Numeric.h"
#include "oribund/host/effects/EffectInstance.h"

namespace oribund
{

namespace
{

/** What text accessors share: a number read as text. */
std::optional<WString> asText(const std::optional<double>& number)
{
    return number ? std::optional<WString>(reinterpretValType<WString>(*number)) : std::nullopt;
}

} // namespace

std::optional<WString> FloatParamAccessor::getValue(const Kt::Ptr<EffectInstance>& effect, double time)
{
    return asText(number_.getValue(effect, time));
}

bool FloatParamAccessor::setValue(const Kt::Ptr<EffectInstance>& effect, const WString& text, double time,
                                  ChangeKind kind)
{
    const auto number = reinterpretValType<double>(text);
    return number && number_.setValue(effect, *number, time, kind);
}

std::optional<WString> ColourComponentTextAccessor::getValue(const Kt::Ptr<EffectInstance>& effect, double time)
{
    return asText(number_.getValue(effect, time));
}

bool ColourComponentTextAccessor::setValue(const Kt::Ptr<EffectInstance>& effect, const WString& text, double time,
                                           ChangeKind kind)
{
    const auto number = reinterpretValType<double>(text);
    return number && number_.setValue(effect, *number, time, kind);
}

template <class P>
std::optional<double> ComponentAccessor<P>::getValue(const Kt::Ptr<EffectInstance>& effect, double time)
{
    const auto whole = whole_.getValue(effect, time);
    return whole ? std::optional<double>(ParamTraits<P>::split(*whole)[component_]) : std::nullopt;
}

template <class P>
std::optional<P> ComponentAccessor<P>::wholeWith(const Kt::Ptr<EffectInstance>& effect, double value, double time)
{
    const auto whole = whole_.getValue(effect, time);
    if (!whole)
        return std::nullopt;
    auto numbers = ParamTraits<P>::split(*whole);
    numbers[component_] = value;
    return ParamTraits<P>::join(numbers);
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

} // namespace oribund
