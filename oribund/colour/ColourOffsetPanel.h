#pragma once

#include "oribund/controls/rows/KeyframeCtrlsBase.h"
#include "oribund/host/effects/params/EffectValParam.h"

#include <array>

namespace oribund
{

class ColourWheel;
class Label;
class NumericEntry;
class ScrubLabel;
class ValSlider;

/**
 * The row of a colour offset, such as lift, gamma or gain: a wheel for its direction, and beside it the level and the
 * three components, each with a slider and an entry. The fourth number of the parameter is left alone.
 */
class ORIBUND_API ColourOffsetPanel : public KeyframeCtrlsBase
{
public:
    /** `paramIndex` counts in the effect's list of parameters. */
    ColourOffsetPanel(const FXViewHandle& handle, unsigned paramIndex, unsigned short width, const Palette& palette,
                      Canvas* canvas);

    /** Of four rows with the gaps between and around them. */
    static int calcHeight();

    ColourWheel& wheel() const { return *wheel_; }

protected:
    void layoutEditors(const Kt::Box<int>& area) override;
    void handleParamReplaced(EffectValParamBase& param) override;

private:
    /** The level first, then red, green and blue. */
    static constexpr std::size_t kLines = 4;

    struct Line {
        ScrubLabel* letter = nullptr;
        ValSlider* slider = nullptr;
        NumericEntry* entry = nullptr;
    };

    void addLine(std::size_t index, const EffectValParam<ColourData>& param);
    void applyDisplay(const EffectValParam<ColourData>& param);
    void layoutLine(const Line& line, const Kt::Box<int>& area, int letterWidth) const;

    ColourWheel* wheel_ = nullptr;
    std::array<Line, kLines> lines_;
};

} // namespace oribund
