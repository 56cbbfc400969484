#pragma once

#include "oribund/host/toolkit/core/GlobRef.h"
#include "oribund/host/toolkit/values/ValWidget.h"

namespace oribund
{

/** A control that shows a value of type `T` and asks an adaptor to change it: it is enabled as the adaptor says. */
template <class Base, class T>
class ORIBUND_API ValControl : public Base, public ValWidget<T>
{
public:
    using Base::Base;

    void setWidgetEnabled(bool enabled) override { this->setEnabled(enabled); }

    bool isWidgetEnabled() const override { return this->isEnabled(); }

    bool letGo() override
    {
        const GlobRef<Base> self(this);
        if constexpr (requires { this->endSeries(false); })
            this->endSeries(false);
        return static_cast<bool>(self);
    }
};

} // namespace oribund
