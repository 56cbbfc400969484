#pragma once

#include "oribund/controls/binding/EffectValParamAdaptor.h"

#include <cmath>

namespace oribund
{

/**
 * Shows the part of an angle that lies within a turn, with the angle's sign, and replaces only that part: an animated
 * rotation of several turns survives an edit of its direction. Of 725 degrees it shows 5; entering 90 writes 810.
 *
 * The whole turns are those at the start of a series of edits: one that goes below zero and on does not lose a turn
 * with every step.
 */
template <class T>
class ORIBUND_API DegreesParamAdaptorBase : public EffectValParamAdaptor<T, EffectValParamAccessor<Angle>>
{
public:
    using Base = EffectValParamAdaptor<T, EffectValParamAccessor<Angle>>;

    DegreesParamAdaptorBase(const FXViewHandle& handle, const EffectValParam<Angle>& param)
        : Base(handle, EffectValParamAccessor<Angle>(param))
    {
    }

    T getDataValue() override
    {
        const auto angle = this->readValue();
        return angle ? reinterpretValType<T>(std::fmod(angle->degrees, kFullTurn)) : T();
    }

    bool requestSetValue(const T& value, ChangeKind kind) override
    {
        const auto angle = this->readValue();
        const std::optional<double> entered = reinterpretValType<double>(value);
        if (!angle || !entered)
            return false;
        if (kind != ChangeKind::Continuation || !wholeTurns_)
            wholeTurns_ = angle->degrees - std::fmod(angle->degrees, kFullTurn);
        return this->write(Angle{*wholeTurns_ + std::fmod(*entered, kFullTurn)}, kind);
    }

    void handleSeriesEnd() override
    {
        wholeTurns_.reset();
        Base::handleSeriesEnd();
    }

private:
    std::optional<double> wholeTurns_; ///< in degrees, during a series
};

/** For widgets of numbers and of text. */
template <class T>
class ORIBUND_API DegreesParamAdaptor final : public DegreesParamAdaptorBase<T>
{
public:
    using DegreesParamAdaptorBase<T>::DegreesParamAdaptorBase;
};

/** Shows and writes the whole angle, turns included. */
template <class T>
class ORIBUND_API RawDegreesParamAdaptor final : public EffectValParamAdaptor<T, EffectValParamAccessor<Angle>>
{
public:
    RawDegreesParamAdaptor(const FXViewHandle& handle, const EffectValParam<Angle>& param)
        : EffectValParamAdaptor<T, EffectValParamAccessor<Angle>>(handle, EffectValParamAccessor<Angle>(param))
    {
    }
};

extern template class DegreesParamAdaptorBase<double>;
extern template class DegreesParamAdaptorBase<WString>;
extern template class DegreesParamAdaptor<double>;
extern template class DegreesParamAdaptor<WString>;
extern template class RawDegreesParamAdaptor<WString>;

} // namespace oribund
