#include "oribund/host/toolkit/widgets/ValColourSwatch.h"

namespace oribund
{

ValColourSwatch::ValColourSwatch(const InitArgs& args)
    : ValControl(args)
{
}

ValColourSwatch::~ValColourSwatch()
{
    if (hasWritten())
        endDataSeries();
}

Colour ValColourSwatch::toColour(const ColourData& data)
{
    return {data[0], data[1], data[2], data[3]};
}

ColourData ValColourSwatch::toColourData(const Colour& colour)
{
    return {{colour.r, colour.g, colour.b, colour.a}};
}

void ValColourSwatch::setWidgetValue(const ColourData& value, eRedrawFlag flag)
{
    setColour(toColour(value), flag);
}

ColourData ValColourSwatch::getWidgetValue() const
{
    return toColourData(getColour());
}

bool ValColourSwatch::handleEdit(const Colour& colour, ChangeKind kind)
{
    return requestDataChange(toColourData(colour), kind);
}

void ValColourSwatch::handleSeriesEnd()
{
    endDataSeries();
}

void ValColourSwatch::handleSeriesCancel(const Colour& original)
{
    cancelDataSeries(toColourData(original));
}

} // namespace oribund
