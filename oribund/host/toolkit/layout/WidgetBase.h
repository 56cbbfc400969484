#pragma once

#include "oribund/host/base/Export.h"
#include "oribund/host/base/Kt.h"
#include "oribund/host/toolkit/layout/AdaptorBase.h"

namespace oribund
{

/** A widget that shows a value, without regard to the type of that value. User-interface thread only. */
class ORIBUND_API WidgetBase
{
public:
    virtual ~WidgetBase();

    WidgetBase(const WidgetBase&) = delete;
    WidgetBase& operator=(const WidgetBase&) = delete;

    /** Leaves the old adaptor, which may end with that, and uses the new one; null for none. */
    void setAdaptor(const Kt::Ptr<AdaptorBase>& adaptor);

    const Kt::Ptr<AdaptorBase>& getAdaptor() const { return adaptor_; }

    /** Called by the adaptor: whether the value can be edited now. */
    virtual void setWidgetEnabled(bool enabled) = 0;
    virtual bool isWidgetEnabled() const = 0;

protected:
    WidgetBase();

private:
    Kt::Ptr<AdaptorBase> adaptor_;
};

} // namespace oribund
