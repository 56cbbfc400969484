#pragma once

#include "oribund/controls/binding/EffectValParamAccessor.h"
#include "oribund/host/base/LightweightString.h"

namespace oribund
{

/** One number of a value that is made of several (`P`); a write leaves the other numbers as they are at that time. */
template <class P>
class ORIBUND_API ComponentAccessor
{
public:
    using Param = P;
    using Value = double;

    /** `component` counts from 0. One that `P` does not have cannot be read, and writing it is refused. */
    ComponentAccessor(const EffectValParam<P>& param, unsigned component)
        : whole_(param)
        , component_(component)
    {
    }

    const IdStamp& paramId() const { return whole_.paramId(); }

    unsigned component() const { return component_; }

    Kt::Ptr<EffectValParam<P>> getParam(const Kt::Ptr<EffectInstance>& effect) { return whole_.getParam(effect); }

    std::optional<double> getValue(const Kt::Ptr<EffectInstance>& effect, double fxTime);
    bool setValue(const Kt::Ptr<EffectInstance>& effect, double value, double fxTime, ChangeKind kind);

    /** Adds a keyframe to the whole value, in which this component has the value given. */
    int addKeyframe(const Kt::Ptr<EffectInstance>& effect, double value, double fxTime, ChangeKind kind);

private:
    using Numbers = decltype(ParamTraits<P>::split(P()));

    std::optional<Numbers> numbers(const Kt::Ptr<EffectInstance>& effect, double fxTime);
    std::optional<P> wholeWith(const Kt::Ptr<EffectInstance>& effect, double value, double fxTime);

    EffectValParamAccessor<P> whole_;
    unsigned component_;
};

extern template class ComponentAccessor<ColourData>;
extern template class ComponentAccessor<Vector2d>;

/** One component of a colour. */
template <class T>
class ColCompAccessor;

template <>
class ORIBUND_API ColCompAccessor<double> : public ComponentAccessor<ColourData>
{
public:
    using ComponentAccessor::ComponentAccessor;
};

/** One coordinate of a position: 0 is x, 1 is y. */
class ORIBUND_API PosAccessor : public ComponentAccessor<Vector2d>
{
public:
    using ComponentAccessor::ComponentAccessor;
};

/** What another accessor has as a number, as text with all its digits. A text that is no number is refused. */
template <class NumberAccessor>
class ORIBUND_API NumberTextAccessor
{
public:
    using Param = typename NumberAccessor::Param;
    using Value = WString;

    /** `more` is what the number's accessor takes besides the parameter. */
    template <class... More>
    explicit NumberTextAccessor(const EffectValParam<Param>& param, More... more)
        : number_(param, more...)
    {
    }

    const IdStamp& paramId() const { return number_.paramId(); }

    Kt::Ptr<EffectValParam<Param>> getParam(const Kt::Ptr<EffectInstance>& effect) { return number_.getParam(effect); }

    std::optional<WString> getValue(const Kt::Ptr<EffectInstance>& effect, double fxTime);
    bool setValue(const Kt::Ptr<EffectInstance>& effect, const WString& text, double fxTime, ChangeKind kind);

private:
    NumberAccessor number_;
};

extern template class NumberTextAccessor<EffectValParamAccessor<double>>;
extern template class NumberTextAccessor<ColCompAccessor<double>>;
extern template class NumberTextAccessor<PosAccessor>;

/** A number as text. */
class ORIBUND_API FloatParamAccessor : public NumberTextAccessor<EffectValParamAccessor<double>>
{
public:
    using NumberTextAccessor::NumberTextAccessor;
};

/** One component of a colour as text. */
class ORIBUND_API ColourComponentTextAccessor : public NumberTextAccessor<ColCompAccessor<double>>
{
public:
    using NumberTextAccessor::NumberTextAccessor;
};

/** One coordinate of a position as text. */
class ORIBUND_API PosTextAccessor : public NumberTextAccessor<PosAccessor>
{
public:
    using NumberTextAccessor::NumberTextAccessor;
};

/** A soft range, which is kept as the four numbers of a colour value, read and written whole. */
class ORIBUND_API ColRangeInterfaceTraits : public EffectValParamAccessor<ColourData>
{
public:
    using EffectValParamAccessor::EffectValParamAccessor;
};

} // namespace oribund
