#pragma once

#include "oribund/host/effects/curves/MultiGraph.h"
#include "oribund/host/effects/params/EffectValParamBase.h"
#include "oribund/host/effects/params/ParamTraits.h"

#include <algorithm>
#include <optional>
#include <type_traits>

namespace oribund
{

/** The graph of a parameter of type `P`: a curve, or several in step. */
template <class P>
using ParamGraph =
    std::conditional_t<ParamTraits<P>::kChannels == 1, BezierCurve, MultiGraph<ParamTraits<P>::kChannels>>;

/** A parameter whose value is of type `P`: one of the types of ParamValue. */
template <class P>
class ORIBUND_API EffectValParam final : public EffectValParamBase
{
public:
    using Value = P;

    /** Of numbers, unlimited; of others, with no range. */
    explicit EffectValParam(ParamInfo info, const P& defaultValue = P());
    /** For numbers. Each component is kept within its own minimum and maximum. */
    EffectValParam(ParamInfo info, const P& defaultValue, const P& minimum,
                   const P& maximum) requires isNumericParam<P>;
    ~EffectValParam() override;

    /** Its set() is setConstant(). */
    ValServer<P>& constantServer() noexcept { return constant_; }

    const P& constant() const noexcept { return constant_.get(); }

    const P& getDefault() const noexcept { return default_; }

    const P& getMin() const noexcept requires isNumericParam<P> { return minimum_; }

    const P& getMax() const noexcept requires isNumericParam<P> { return maximum_; }

    /** The nearest value within the range; values without a range as they are. */
    P clamp(const P& value) const noexcept;

    /** The value at an effect time, within the range. */
    P getValue(double fxTime) const;

    /** A change that opens something new is announced by the constant's server before it is made. */
    bool setConstant(const P& value, ChangeKind kind = ChangeKind::Single);

    /** Adds a keyframe of that value. Its index; -1 without a graph and where there is a keyframe already. */
    int addKeyframeAt(double fxTime, const P& value, ChangeKind kind = ChangeKind::Single) requires isNumericParam<P>;
    /** Gives an existing keyframe that value, in all channels as one change. */
    bool setKeyframeValueAt(int index, const P& value, ChangeKind kind = ChangeKind::Single) requires isNumericParam<P>;

    void accept(ParamVisitor& visitor) override;
    ParamValue constantValue() const override;
    ParamValue defaultValue() const override;
    ParamValue valueAt(double fxTime) const override;
    bool setConstantValue(const ParamValue& value, ChangeKind kind = ChangeKind::Single) override;
    bool restoreConstant(const ParamValue& value, ChangeKind kind = ChangeKind::Single) override;

private:
    class ConstantServer final : public ValServer<P>
    {
    public:
        ConstantServer(EffectValParam& param, const P& value)
            : ValServer<P>(value)
            , param_(param)
        {
        }

        bool set(const P& value, ChangeKind kind = ChangeKind::Single) override
        {
            return value != this->get() && param_.setConstant(value, kind);
        }

    private:
        EffectValParam& param_;
    };

    struct NoGraph {
    };

    using Graph = typename std::conditional_t<isNumericParam<P>, std::type_identity<ParamGraph<P>>,
                                              std::type_identity<NoGraph>>::type;

    EffectValParam(ParamInfo info, const P& defaultValue, const P& minimum, const P& maximum, int);

    void store(const P& value, ChangeKind kind);
    void restGraph(const P& value) noexcept;
    void addFirstKeyframe(double fxTime, ChangeKind kind) override;
    void freezeConstant(double fxTime, ChangeKind kind) override;

    P minimum_;
    P maximum_;
    P default_;
    ConstantServer constant_;
    [[no_unique_address]] Graph graph_;
};

ORIBUND_FOR_PARAM_TYPES(ORIBUND_DECLARE_FOR_TYPE, EffectValParam)

} // namespace oribund
