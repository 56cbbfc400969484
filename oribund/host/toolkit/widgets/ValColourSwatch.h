#pragma once

#include "oribund/host/base/ColourData.h"
#include "oribund/host/base/Export.h"
#include "oribund/host/toolkit/values/ValControl.h"
#include "oribund/host/toolkit/widgets/ColourSwatch.h"

namespace oribund
{

/** A swatch that edits a colour (red, green, blue, opacity) through an adaptor. */
class ORIBUND_API ValColourSwatch : public ValControl<ColourSwatch, ColourData>
{
public:
    explicit ValColourSwatch(const InitArgs& args);
    ~ValColourSwatch() override;

    static Colour toColour(const ColourData& data);
    static ColourData toColourData(const Colour& colour);

    void setWidgetValue(const ColourData& value, eRedrawFlag flag) override;
    ColourData getWidgetValue() const override;

protected:
    bool handleEdit(const Colour& colour, ChangeKind kind) override;
    void handleSeriesEnd() override;
    void handleSeriesCancel(const Colour& original) override;
};

} // namespace oribund
