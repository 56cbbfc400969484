#include "oribund/host/toolkit/layout/WidgetBase.h"

namespace oribund
{

WidgetBase::WidgetBase() = default;

WidgetBase::~WidgetBase()
{
    setAdaptor(nullptr);
}

void WidgetBase::setAdaptor(const Kt::Ptr<AdaptorBase>& adaptor)
{
    if (adaptor == adaptor_)
        return;
    const Kt::Ptr<AdaptorBase> old = adaptor_;
    adaptor_ = adaptor;
    if (old)
        old->detachWidget(*this);
    if (adaptor_)
        adaptor_->attachWidget(*this);
}

} // namespace oribund
