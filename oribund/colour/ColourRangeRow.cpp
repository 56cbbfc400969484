#include "oribund/colour/ColourRangeRow.h"

#include "oribund/colour/ColourRangePanel.h"
#include "oribund/colour/TolerantRangeEditor.h"
#include "oribund/controls/binding/EffectValParamAdaptor.h"
#include "oribund/controls/rows/KeyframeButtonAdaptor.h"
#include "oribund/host/effects/params/NumberDisplay.h"

#include <array>

namespace oribund
{

/** A strip that the panel paints. */
class ColourRangeRow::Strip final : public TolerantRangeEditor
{
public:
    Strip(ColourRangeRow& row, ColourRangePanel& panel, std::size_t axis)
        : TolerantRangeEditor(0, row.getPalette(), row.canvas())
        , row_(row)
        , panel_(panel)
        , axis_(axis)
    {
        constexpr std::size_t kHue = 0;
        if (axis == kHue)
            setCircularValue(ColEyeDropBase::hueAxis().span, ColEyeDropBase::hueAxis().period);
    }

protected:
    void drawBackgroundInternal(CanvasRenderer& renderer, const Kt::Box<double>& strip) override
    {
        using Painter = void (*)(TolerantRangeEditor&, CanvasRenderer&, const Kt::Box<double>&, ColourRangePanel&);
        static constexpr std::array<Painter, ColourRangePanel::kRows> kPainters{
            &ColourRangePanel::drawHueSlider, &ColourRangePanel::drawSatSlider, &ColourRangePanel::drawLumSlider};
        kPainters[axis_](*this, renderer, strip, panel_);
    }

    bool keepsTurns() const override
    {
        const auto param = row_.getEffectParam();
        return param && param->functionType() == EffectValParamFnType::Keyframed;
    }

private:
    ColourRangeRow& row_;
    ColourRangePanel& panel_;
    std::size_t axis_;
};

ColourRangeRow::ColourRangeRow(ColourRangePanel& panel, std::size_t axis, const FXViewHandle& handle,
                               const EffectValParam<ColourData>& param, unsigned short width, unsigned short labelWidth,
                               Canvas* canvas)
    : KeyframeCtrlsBase(handle, param.id(), width, labelWidth,
                        static_cast<unsigned short>(TolerantRangeEditor::calcHeight()), canvas)
{
    strip_ = addEditor(std::make_unique<Strip>(*this, panel, axis));
    applyDisplay(param);
    strip_->setDataAdaptor(Kt::makePtr<ColourRangeAdaptor>(handle, ColRangeInterfaceTraits(param)));
    setKeyframeAdaptor(Kt::makePtr<KeyframeButtonAdaptor<EffectValParamAccessor<ColourData>>>(
        handle, EffectValParamAccessor<ColourData>(param)));
    finishRow();
}

void ColourRangeRow::layoutEditors(const Kt::Box<int>& area)
{
    // The gradient begins in line with other editors; a handle at its start reaches into the gap.
    const int half = RangeGeometry::nobbleSize() / 2;
    strip_->setPosition({area.left - half, area.top});
    strip_->resize({area.width() + half, area.height()});
}

void ColourRangeRow::handleParamReplaced(EffectValParamBase& param)
{
    if (const auto* range = dynamic_cast<const EffectValParam<ColourData>*>(&param))
        applyDisplay(*range);
}

void ColourRangeRow::applyDisplay(const EffectValParam<ColourData>& param)
{
    const NumberDisplay display = NumberDisplay::of(param, 0);
    strip_->setNumbers(display.format, display.step);
    strip_->setResetValue(param.getDefault());
}

} // namespace oribund
