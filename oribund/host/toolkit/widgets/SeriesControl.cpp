#include "oribund/host/toolkit/widgets/SeriesControl.h"

#include "oribund/host/toolkit/core/GlobChange.h"
#include "oribund/host/toolkit/layout/StandardPanel.h"

namespace oribund
{

template <class T, class Base>
SeriesControl<T, Base>::SeriesControl(const GlobCreationInfo& info, const T& initial)
    : Base(info)
    , shown_(initial)
{
}

template <class T, class Base>
void SeriesControl<T, Base>::receive(const T& value, eRedrawFlag redrawFlag)
{
    if (!series_.defer(value))
        show(value, redrawFlag);
}

template <class T, class Base>
void SeriesControl<T, Base>::show(const T& value, eRedrawFlag redrawFlag)
{
    if (value == shown_)
        return;
    shown_ = value;
    this->changed(GlobChange::kState | GlobChange::kContents, redrawFlag);
}

template <class T, class Base>
void SeriesControl<T, Base>::edit(const T& value)
{
    const GlobRef<SeriesControl> self(this);
    const RedrawHold hold;
    const T before = shown_;
    show(value);
    const bool accepted = handleEdit(value, inSeries() ? series_.nextKind() : ChangeKind::Single);
    if (!self)
        return;
    series_.noteResult(accepted);
    if (!accepted && shown_ == value)
        show(before);
}

template <class T, class Base>
void SeriesControl<T, Base>::endSeries(bool cancelled)
{
    if (!inSeries())
        return;
    const RedrawHold hold;
    const auto outcome = series_.close(cancelled);
    if (outcome.shown)
        show(*outcome.shown);
    if (!outcome.written)
        return;
    if (cancelled)
        handleSeriesCancel(outcome.original);
    else
        handleSeriesEnd();
}

template <class T, class Base>
void SeriesControl<T, Base>::handleSeriesEnd()
{
}

template <class T, class Base>
void SeriesControl<T, Base>::handleSeriesCancel(const T& original)
{
    handleEdit(original, ChangeKind::Continuation);
}

template class SeriesControl<double>;
template class SeriesControl<ColourData>;
template class SeriesControl<Colour, ClickControl>;
template class SeriesControl<double, StandardPanel>;

} // namespace oribund
