#pragma once

#include "oribund/controls/binding/ComponentAccessors.h"

namespace oribund
{

/** The level of a colour offset: the mean of red, green and blue. */
constexpr double levelOf(const ColourData& offset)
{
    return (offset[0] + offset[1] + offset[2]) / 3.0;
}

/** The same offset at another level: all three moved alike. */
constexpr ColourData withLevel(ColourData offset, double level)
{
    const double by = level - levelOf(offset);
    for (std::size_t i = 0; i < 3; ++i)
        offset[i] += by;
    return offset;
}

/** The level of a colour offset as one number; a write moves red, green and blue alike. */
class ORIBUND_API ColourLevelAccessor
{
public:
    using Param = ColourData;
    using Value = double;

    explicit ColourLevelAccessor(const EffectValParam<ColourData>& param)
        : whole_(param)
    {
    }

    const IdStamp& paramId() const { return whole_.paramId(); }

    Kt::Ptr<EffectValParam<ColourData>> getParam(const Kt::Ptr<EffectInstance>& effect)
    {
        return whole_.getParam(effect);
    }

    std::optional<double> getValue(const Kt::Ptr<EffectInstance>& effect, double fxTime);
    bool setValue(const Kt::Ptr<EffectInstance>& effect, double level, double fxTime, ChangeKind kind);

private:
    EffectValParamAccessor<ColourData> whole_;
};

extern template class NumberTextAccessor<ColourLevelAccessor>;

/** The level of a colour offset as text. */
class ORIBUND_API ColourLevelTextAccessor : public NumberTextAccessor<ColourLevelAccessor>
{
public:
    using NumberTextAccessor::NumberTextAccessor;
};

} // namespace oribund
