#pragma once

#include "oribund/host/toolkit/core/Drawable.h"
#include "oribund/host/toolkit/values/ValAdaptorBase.h"
#include "oribund/host/toolkit/values/ValView.h"

namespace oribund
{

/**
 * The part of a widget that shows a value of type `T` and asks its adaptor to change it.
 *
 * Each of the requests below may end with this widget destroyed: a caller that goes on afterwards finds out with a
 * GlobRef.
 */
template <class T>
class ORIBUND_API ValWidget : public ValView<T>
{
public:
    /** Uses the adaptor from now on and shows its value; null leaves what is shown as it is. Ends a drag first, which
       is the old one's. */
    void setDataAdaptor(Kt::Ptr<ValAdaptorBase<T>> adaptor)
    {
        if (this->getAdaptor() && adaptor != this->getAdaptor() && !this->letGo())
            return;
        this->setAdaptor(adaptor);
        if (adaptor)
            adaptor->forceWidgetUpdate(eRedrawFlag::Yes);
    }

    /** Null when there is no adaptor, or one for values of another type. */
    Kt::Ptr<ValAdaptorBase<T>> getDataAdaptor() const { return Kt::dynamicCast<ValAdaptorBase<T>>(this->getAdaptor()); }

protected:
    /** Asks for a change of the value, and repaints once when all that follows from it is done. False: refused. */
    bool requestDataChange(const T& value, ChangeKind kind)
    {
        const Kt::Ptr<ValAdaptorBase<T>> adaptor = getDataAdaptor();
        if (!adaptor)
            return false;
        const RedrawHold hold;
        return adaptor->requestSetValue(value, kind);
    }

    /** Tells the adaptor that a series is complete, and shows the value that has come of it. */
    void endDataSeries()
    {
        if (const Kt::Ptr<ValAdaptorBase<T>> adaptor = getDataAdaptor()) {
            const RedrawHold hold;
            adaptor->handleSeriesEnd();
            adaptor->forceWidgetUpdate(eRedrawFlag::Yes);
        }
    }

    /** Gives up a series that began at `original`, and shows the value that stands afterwards. */
    void cancelDataSeries(const T& original)
    {
        if (const Kt::Ptr<ValAdaptorBase<T>> adaptor = getDataAdaptor()) {
            const RedrawHold hold;
            if (!adaptor->cancelSeries())
                adaptor->requestSetValue(original, ChangeKind::Continuation);
            adaptor->handleSeriesEnd();
            adaptor->forceWidgetUpdate(eRedrawFlag::Yes);
        }
    }

    /** Undoes the series that was ended last, if it can be undone, and shows the value that stands afterwards. */
    void takeBackDataSeries()
    {
        const Kt::Ptr<ValAdaptorBase<T>> adaptor = getDataAdaptor();
        const RedrawHold hold;
        if (adaptor && adaptor->takeBackSeries())
            adaptor->forceWidgetUpdate(eRedrawFlag::Yes);
    }

    /** Shows the adaptor's value again, after a request that it refused or altered. */
    void refreshFromData()
    {
        if (const Kt::Ptr<ValAdaptorBase<T>> adaptor = getDataAdaptor())
            adaptor->forceWidgetUpdate(eRedrawFlag::Yes);
    }
};

} // namespace oribund
