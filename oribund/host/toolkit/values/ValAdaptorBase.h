#pragma once

#include "oribund/host/base/LightweightString.h"
#include "oribund/host/notify/ChangeKind.h"
#include "oribund/host/toolkit/core/eRedrawFlag.h"
#include "oribund/host/toolkit/layout/AdaptorBase.h"
#include "oribund/host/toolkit/values/ValView.h"

namespace oribund
{

/**
 * Gives widgets the value of type `T` that they show, and turns what the user does with them into edits of it. Several
 * widgets may share one adaptor and then show the same value.
 */
template <class T>
class ORIBUND_API ValAdaptorBase : public AdaptorBase
{
public:
    using ValueType = T;

    /** The value to show. */
    virtual T getDataValue() = 0;

    /** Reads the value again and gives it to all widgets. */
    virtual void forceWidgetUpdate(eRedrawFlag flag) { setNewWidgetValue(getDataValue(), flag); }

    /**
     * Makes the edit that a widget asks for. False when it is refused: nothing has changed then, and the widget shows
     * the present value again.
     */
    virtual bool requestSetValue(const T& value, ChangeKind kind) = 0;

    /** A message for whoever made the widget. */
    virtual void handleMsgForParent(LightweightString<char>) {}

    /** Gives a value to each attached widget, in the order in which they were attached. */
    virtual void setNewWidgetValue(T value, eRedrawFlag flag)
    {
        // Only widgets of this type are in the list.
        this->forEachWidget([&](WidgetBase& widget) { static_cast<ValView<T>&>(widget).setWidgetValue(value, flag); });
    }

    /** The user has let go: the series of edits that a ChangeKind::Start opened has no more to come. */
    virtual void handleSeriesEnd() {}

    /**
     * The user gives up a series of edits. True when what was there before it has been put back; false when the
     * adaptor keeps no record of that, and the widget is to ask for the value that it started from.
     */
    virtual bool cancelSeries() { return false; }

    /**
     * Undoes the series that was ended last, as if it had not been. False when the adaptor keeps no record of it, or
     * something else has been done since.
     */
    virtual bool takeBackSeries() { return false; }

protected:
    bool isServing(const WidgetBase& widget) const override
    {
        return dynamic_cast<const ValView<T>*>(&widget) != nullptr;
    }
};

} // namespace oribund
