#pragma once

#include "oribund/host/base/Export.h"
#include "oribund/host/base/IdStamp.h"
#include "oribund/host/base/Kt.h"
#include "oribund/host/edit/monitor/FXVob.h"

namespace oribund
{

/**
 * The handle of one effect in a view: an FXVob, and which effect of it is meant - the effect itself, one of its
 * embedded children or its mask. A cheap value; a default-constructed one yields no effect.
 */
class ORIBUND_API FXViewHandle
{
public:
    FXViewHandle() = default;

    /** The FXVob's own effect. */
    explicit FXViewHandle(Kt::Ptr<FXVob> fxVob);

    FXViewHandle(Kt::Ptr<FXVob> fxVob, const IdStamp& viewEffectId);

    const Kt::Ptr<FXVob>& getFXVob() const { return fxVob_; }

    /** The viewer; null when there is none (any more). */
    Vob* getVob() const { return fxVob_ ? fxVob_->getVob() : nullptr; }

    const IdStamp& getViewEffectID() const { return viewEffectId_; }

    void setViewEffectID(const IdStamp& id) { viewEffectId_ = id; }

    /** The effect, child or mask meant; empty when the edit does not hold it. */
    Kt::Ptr<EffectInstance> getEffectPtr() const;

private:
    Kt::Ptr<FXVob> fxVob_;
    IdStamp viewEffectId_;
};

} // namespace oribund
