#include "oribund/host/toolkit/widgets/ValSlider.h"

namespace oribund
{

ValSlider::ValSlider(const InitArgs& args)
    : ValControl(args)
{
}

ValSlider::~ValSlider()
{
    if (hasWritten())
        endDataSeries();
}

void ValSlider::setWidgetValue(const double& value, eRedrawFlag flag)
{
    setValue(value, flag);
}

double ValSlider::getWidgetValue() const
{
    return getValue();
}

bool ValSlider::handleEdit(const double& value, ChangeKind kind)
{
    const GlobRef<ValSlider> self(this);
    const bool accepted = requestDataChange(value, kind);
    // Adaptors may put a value in another form and then tell nobody, as nothing has changed for them.
    if (self && !isDragging())
        refreshFromData();
    return accepted;
}

void ValSlider::handleSeriesEnd()
{
    endDataSeries();
}

void ValSlider::handleSeriesCancel(const double& original)
{
    cancelDataSeries(original);
}

void ValSlider::handleSeriesTakenBack()
{
    takeBackDataSeries();
}

} // namespace oribund
