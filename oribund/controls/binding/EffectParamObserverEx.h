#pragma once

#include "oribund/controls/binding/EffectParamObserver.h"
#include "oribund/host/base/Numeric.h"
#include "oribund/host/edit/monitor/FXVobClient.h"
#include "oribund/host/effects/EffectInstance.h"

#include <optional>
#include <utility>

namespace oribund
{

/** Sorts the changes that an effect monitor tells of: what follows from one for something bound to one parameter. */
struct ORIBUND_API ParamChangeFilter {
    /** Everything may have changed. */
    static bool isWholesale(const EffectChangeDescription& change);

    /** The parameters are others than before: what is bound to one has to find it again. */
    static bool isParamSetChange(const EffectChangeDescription& change);

    /** The change concerns the effect, may alter what a control shows, and has not been told by the parameter itself.
     */
    static bool concerns(const EffectChangeDescription& change, const IdStamp& effectId);

    /** No more than the current time has moved. */
    static bool isTimeMove(const EffectChangeDescription& change);
};

/**
 * Follows one parameter of the effect in a view, through an accessor that knows how to read it: stays bound when the
 * effect's parameters are inserted, removed or replaced, and refreshes whenever what it shows may have changed.
 */
template <class Accessor, class Observer>
class EffectParamObserverEx : public FXVobClient, private ParamRefreshTarget
{
public:
    using Param = typename Accessor::Param;
    using Value = typename Accessor::Value;

    EffectParamObserverEx(const FXViewHandle& handle, Accessor accessor)
        : FXVobClient(handle)
        , accessor_(std::move(accessor))
        , observer_(static_cast<ParamRefreshTarget&>(*this))
    {
        bind();
    }

    /** Empty while there is no effect, or it has no such parameter. */
    Kt::Ptr<EffectValParam<Param>> getParam() { return accessor_.getParam(getEffectPtr()); }

    /** The current time as every read and write uses it: effect time within 0..1, but for a tolerance of 1e-9. */
    double getClampedTime() const { return clampNormalisedTime(getNormalisedCurrentTime()); }

protected:
    /** Something has changed: read again and show it. */
    virtual void refresh() = 0;

    /** The time has moved, over which the value is the same; whether it can be edited may not be. */
    virtual void refreshEnabled() = 0;

    Accessor& accessor() { return accessor_; }

    /** Whether the parameter can be edited now, as edit and effect say; nothing while the latter or it is gone. */
    std::optional<bool> isEditable() const
    {
        const Kt::Ptr<EffectInstance> effect = getEffectPtr();
        return effect && boundParam() ? std::optional(canEditParam(*effect, *boundParam())) : std::nullopt;
    }

    /** The parameter that is listened to: getParam() without a search. Empty while there is none. */
    const Kt::Ptr<EffectValParam<Param>>& boundParam() const { return observer_.param(); }

    /** The value at the current time. */
    std::optional<Value> readValue() { return accessor_.getValue(getEffectPtr(), getClampedTime()); }

    void handleFXModifications(const ChangeDescription& change) override
    {
        if (ParamChangeFilter::isParamSetChange(change) || ParamChangeFilter::isWholesale(change)) {
            bind();
            refresh();
            return;
        }
        if (!ParamChangeFilter::concerns(change, getViewHandle().getViewEffectID()))
            return;
        // While the edit is played every control hears of every frame, and most parameters are not animated.
        if (ParamChangeFilter::isTimeMove(change) && isConstant())
            refreshEnabled();
        else
            refresh();
    }

private:
    void bind() { observer_.registerWith(getParam()); }

    bool isConstant() const { return boundParam() && boundParam()->functionType() == EffectValParamFnType::Constant; }

    void handleParamChange() override { refresh(); }

    Accessor accessor_;
    Observer observer_;
};

} // namespace oribund
