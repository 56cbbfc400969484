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
    if (isAnswered_)
        answer_ = degrees;
    setAngle(degrees, flag);
}

double AngleParamWidget::getIndicatorValue()
{
    const auto adaptor = getDataAdaptor();
    return adaptor ? adaptor->getDataValue() : shown();
}

bool AngleParamWidget::setIndicatorValue(double degrees, ChangeKind kind)
{
    const GlobRef<AngleParamWidget> self(this);
    isAnswered_ = true;
    const bool accepted = requestDataChange(degrees, kind);
    // An adaptor that has limited the value to what it was before tells nobody.
    if (self)
        refreshFromData();
    if (self)
        isAnswered_ = false;
    return accepted;
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
