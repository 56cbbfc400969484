#pragma once

#include "oribund/host/base/Export.h"
#include "oribund/host/toolkit/values/ValControl.h"
#include "oribund/host/toolkit/widgets/Slider.h"

namespace oribund
{

/** A slider that edits a number through an adaptor. */
class ORIBUND_API ValSlider : public ValControl<Slider, double>
{
public:
    explicit ValSlider(const InitArgs& args);
    ~ValSlider() override;

    void setWidgetValue(const double& value, eRedrawFlag flag) override;
    double getWidgetValue() const override;

protected:
    bool handleEdit(const double& value, ChangeKind kind) override;
    void handleSeriesEnd() override;
    void handleSeriesCancel(const double& original) override;
    void handleSeriesTakenBack() override;
};

} // namespace oribund
