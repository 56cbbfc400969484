#include "oribund/controls/rows/AngleParamWidget.h"

#include "oribund/controls/rows/GraphColManager.h"

namespace oribund
{

AngleParamWidget::AngleParamWidget(const InitArgs& args, const FXViewHandle& handle, const EffectValParam<Angle>& param)
    : ValControl(args)
    , colour_(GraphColManager::getColourFor(param.id()))
{
    setDataAdaptor(Kt::makePtr<DegreesParamAdaptor<double>>(handle, param));
}

AngleParamWidget::~AngleParamWidget()
{
    if (hasWritten())
        endDataSeries();
}

void AngleParamWidget::setWidgetValue(const double& degrees, eRedrawFlag flag)
{
    degrees_ = degrees;
    setAngle(degrees, flag);
}

double AngleParamWidget::getIndicatorValue()
{
    const auto adaptor = getDataAdaptor();
    return adaptor ? adaptor->getDataValue() : degrees_;
}

bool AngleParamWidget::setIndicatorValue(double degrees, ChangeKind kind)
{
    return requestDataChange(degrees, kind);
}

void AngleParamWidget::handleSeriesEnd()
{
    endDataSeries();
}

void AngleParamWidget::handleSeriesCancel(const double& original)
{
    cancelDataSeries(original);
}

} // namespace oribund
