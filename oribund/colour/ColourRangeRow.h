#pragma once

#include "oribund/controls/rows/KeyframeCtrlsBase.h"
#include "oribund/host/effects/params/EffectValParam.h"

namespace oribund
{

class ColourRangePanel;
class TolerantRangeEditor;

/** One row of a ColourRangePanel: that of one axis. */
class ColourRangeRow final : public KeyframeCtrlsBase
{
public:
    /** `axis` counts from 0: hue, saturation, luminance. The panel is the one that the row stands in. */
    ColourRangeRow(ColourRangePanel& panel, std::size_t axis, const FXViewHandle& handle,
                   const EffectValParam<ColourData>& param, unsigned short width, unsigned short labelWidth,
                   Canvas* canvas);

    TolerantRangeEditor& editor() const { return *strip_; }

protected:
    void layoutEditors(const Kt::Box<int>& area) override;
    void handleParamReplaced(EffectValParamBase& param) override;

private:
    class Strip;

    void applyDisplay(const EffectValParam<ColourData>& param);

    TolerantRangeEditor* strip_ = nullptr;
};

} // namespace oribund
