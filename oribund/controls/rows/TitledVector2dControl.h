#pragma once

#include "oribund/controls/rows/KeyframeCtrlsBase.h"
#include "oribund/host/base/Colour.h"
#include "oribund/host/effects/params/EffectValParam.h"

#include <array>

namespace oribund
{

class ScrubLabel;
class ValSlider;

/**
 * The row of a place: X and Y side by side, each with its letter, a slider as far as there is room, and an entry. A
 * stripe shows the colour that the parameter has in graphs and in handles over the picture.
 */
class ORIBUND_API TitledVector2dControl : public KeyframeCtrlsBase
{
public:
    TitledVector2dControl(const FXViewHandle& handle, const EffectValParam<Vector2d>& param, unsigned short width,
                          unsigned short labelWidth, Canvas* canvas);

    const Colour& getColour() const { return colour_; }

    void draw(CanvasRenderer& renderer) override;

protected:
    void layoutEditors(const Kt::Box<int>& area) override;
    void handleParamReplaced(EffectValParamBase& param) override;

private:
    struct Coordinate {
        ScrubLabel* letter = nullptr;
        ValSlider* slider = nullptr;
        NumericEntry* entry = nullptr;
    };

    void addCoordinate(unsigned index, const EffectValParam<Vector2d>& param);
    void applyDisplay(const EffectValParam<Vector2d>& param);
    void layoutCoordinate(Coordinate& coordinate, const Kt::Box<int>& area);

    std::array<Coordinate, 2> coordinates_;
    Colour colour_;
};

} // namespace oribund
