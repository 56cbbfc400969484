#pragma once

#include "oribund/host/base/Colour.h"
#include "oribund/host/base/ColourData.h"
#include "oribund/host/base/Export.h"
#include "oribund/host/toolkit/core/Control.h"
#include "oribund/host/toolkit/values/EditSeries.h"
#include "oribund/host/toolkit/widgets/ClickControl.h"

namespace oribund
{

/**
 * A glob that shows a value of type `T` and lets the user change it in gestures of many edits, each one series. How
 * such a gesture goes stands here alone: an edit is shown at once, and taken back when it is refused; a value that
 * comes from elsewhere meanwhile is shown at the end; giving up shows what was there before. `Base` is the glob's own
 * kind.
 */
template <class T, class Base = Control>
class ORIBUND_API SeriesControl : public Base
{
protected:
    SeriesControl(const GlobCreationInfo& info, const T& initial);

    const T& shown() const { return shown_; }

    /** Shows a value that comes from elsewhere; one that comes during a series, when that has ended. */
    void receive(const T& value, eRedrawFlag redrawFlag);

    bool inSeries() const { return series_.isOpen(); }

    /** The value from which the next edit starts: what is shown or, before the first of a series, its original. */
    const T& present() const { return inSeries() && !series_.hasWritten() ? series_.original() : shown_; }

    /** Whether the open series has made an edit. */
    bool hasWritten() const { return series_.hasWritten(); }

    void beginSeries(const T& original) { series_.begin(original); }

    /** Shows the value and asks for it, as the next edit of the open series or one on its own. May destroy the glob. */
    void edit(const T& value);

    /** Ends the open series, if there is one. May destroy the glob. */
    void endSeries(bool cancelled);

    /** Makes an edit; false when it is refused. May destroy the glob. */
    virtual bool handleEdit(const T& value, ChangeKind kind) = 0;

    /** A series has ended after at least one edit. */
    virtual void handleSeriesEnd();

    /** A series was given up after at least one edit; by default it asks for the value that it began with. */
    virtual void handleSeriesCancel(const T& original);

private:
    void show(const T& value, eRedrawFlag redrawFlag = eRedrawFlag::Yes);

    T shown_;
    EditSeries<T> series_;
};

extern template class SeriesControl<double>;
extern template class SeriesControl<ColourData>;
// Colour is a hidden type, which would hide the template made for it too.
extern template class ORIBUND_API SeriesControl<Colour, ClickControl>;

} // namespace oribund
