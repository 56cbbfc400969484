#pragma once

#include "oribund/controls/binding/EffectValParamAdaptor.h"

#include <algorithm>
#include <cmath>
#include <optional>

namespace oribund
{

/**
 * Shows the part of an angle that lies within a turn, with the angle's sign, and replaces only that part: an animated
 * rotation of several turns survives an edit of its direction. Of 725 degrees it shows 5; entering 90 writes 810.
 *
 * The whole turns are those at the start of a series of edits, for as long as the time and the angle are what its last
 * edit left: one that goes below zero and on does not lose a turn with every step. Of turns with which the angle would
 * leave its range as many are dropped as have to be.
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
        // Of whole turns backwards the rest is a zero with a sign.
        return angle ? shownNumber<T>(std::fmod(angle->degrees, kFullTurn) + 0.0) : T();
    }

    bool requestSetValue(const T& value, ChangeKind kind) override
    {
        const auto param = this->getParam();
        const std::optional<double> entered = reinterpretValType<double>(value);
        if (!param || !entered)
            return false;
        const Kt::Ptr<AdaptorBase> self = this->keepAlive();
        const double fxTime = this->getClampedTime();
        const double now = param->getValue(fxTime).degrees;
        const bool goesOn = kind == ChangeKind::Continuation && last_ && last_->fxTime == fxTime && last_->angle == now;
        const double turns = goesOn ? last_->turns : now - std::fmod(now, kFullTurn);
        const bool written = this->write(withTurns(*param, std::fmod(*entered, kFullTurn), turns), kind);
        last_ = Last{fxTime, param->getValue(fxTime).degrees, turns};
        return written;
    }

    void handleSeriesEnd() override
    {
        last_.reset();
        Base::handleSeriesEnd();
    }

private:
    /** What an edit has left; in degrees, the turns those that it was asked for. */
    struct Last {
        double fxTime;
        double angle;
        double turns;
    };

    static Angle withTurns(const EffectValParam<Angle>& param, double direction, double turns)
    {
        const double above = direction + turns - param.getMax().degrees;
        const double below = param.getMin().degrees - direction - turns;
        if (above > 0.0 && turns > 0.0)
            turns -= std::min(std::ceil(above / kFullTurn) * kFullTurn, turns);
        else if (below > 0.0 && turns < 0.0)
            turns += std::min(std::ceil(below / kFullTurn) * kFullTurn, -turns);
        return Angle{direction + turns};
    }

    std::optional<Last> last_; ///< during a series
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
