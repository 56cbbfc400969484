#pragma once

#include "oribund/controls/binding/DegreesParamAdaptor.h"
#include "oribund/host/base/Colour.h"
#include "oribund/host/toolkit/values/ValControl.h"
#include "oribund/host/toolkit/widgets/AngleIndicatorWidget.h"

namespace oribund
{

/** A dial bound to an angle parameter, in the colour of the parameter's graph. */
class ORIBUND_API AngleParamWidget : public ValControl<AngleIndicatorWidget, double>
{
public:
    AngleParamWidget(const InitArgs& args, const FXViewHandle& handle, const EffectValParam<Angle>& param);
    ~AngleParamWidget() override;

    void setWidgetValue(const double& degrees, eRedrawFlag flag) override;

    double getWidgetValue() const override { return getStoredValue(); }

protected:
    double getIndicatorValue() override;
    bool setIndicatorValue(double degrees, ChangeKind kind) override;

    /** In a drag the answer to it; what comes from elsewhere is shown at its end. */
    double getStoredValue() const override { return hasWritten() ? answer_ : shown(); }

    Colour getIndicatorColour() const override { return colour_; }

    void handleSeriesEnd() override;
    void handleSeriesCancel(const double& original) override;

private:
    double answer_ = 0.0;
    bool isAnswered_ = false; ///< what comes now is the answer to the dial's own request
    Colour colour_;
};

} // namespace oribund
