#pragma once

#include "oribund/host/toolkit/core/eRedrawFlag.h"
#include "oribund/host/toolkit/layout/WidgetBase.h"

namespace oribund
{

/** What an adaptor of values of type `T` sees of a widget. Widgets derive from ValWidget. */
template <class T>
class ORIBUND_API ValView : public WidgetBase
{
public:
    /** Shows a value; asks nobody to store it. */
    virtual void setWidgetValue(const T& value, eRedrawFlag flag) = 0;

    /** The value shown. */
    virtual T getWidgetValue() const = 0;

    /** Ends what the user is dragging or choosing, as a release does. False when the widget is gone with that. */
    virtual bool letGo() { return true; }
};

} // namespace oribund
