#pragma once

#include "oribund/controls/rows/KeyframeCtrlsBase.h"
#include "oribund/host/effects/params/EffectValParam.h"
#include "workbench/app/panel/ParamRow.h"

#include <array>

namespace oribund
{
class ScrubLabel;
class ValSlider;
} // namespace oribund

namespace workbench
{

/** The row of a place: X and Y side by side, each with its letter, a slider as far as there is room, and an entry. */
class PointRow : public oribund::KeyframeCtrlsBase
{
public:
    PointRow(const oribund::FXViewHandle& handle, const oribund::EffectValParam<oribund::Vector2d>& param,
             const ParamRowArgs& args);

protected:
    void layoutEditors(const oribund::Kt::Box<int>& area) override;
    void handleParamReplaced(oribund::EffectValParamBase& param) override;

private:
    struct Coordinate {
        oribund::ScrubLabel* letter = nullptr;
        oribund::ValSlider* slider = nullptr;
        oribund::NumericEntry* entry = nullptr;
    };

    void addCoordinate(unsigned index, const oribund::EffectValParam<oribund::Vector2d>& param);
    void applyDisplay(const oribund::EffectValParam<oribund::Vector2d>& param);
    void layoutCoordinate(Coordinate& coordinate, const oribund::Kt::Box<int>& area);

    std::array<Coordinate, 2> coordinates_;
};

} // namespace workbench
