#include "oribund/colour/ColourOffsetPanel.h"

#include "oribund/colour/ColourWheel.h"
#include "oribund/controls/binding/EffectValParamAdaptor.h"
#include "oribund/controls/rows/KeyframeButtonAdaptor.h"
#include "oribund/host/canvas/UifStd.h"
#include "oribund/host/effects/params/NumberDisplay.h"
#include "oribund/host/services/TextIds.h"
#include "oribund/host/services/TextTable.h"
#include "oribund/host/toolkit/entries/NumericEntry.h"
#include "oribund/host/toolkit/entries/ScrubLabel.h"
#include "oribund/host/toolkit/widgets/ValSlider.h"

#include <algorithm>
#include <cmath>

namespace oribund
{

namespace
{

using OffsetParam = EffectValParam<ColourData>;

Kt::Ptr<OffsetParam> offsetParamAt(const FXViewHandle& handle, unsigned index)
{
    const Kt::Ptr<EffectInstance> effect = handle.getEffectPtr();
    return effect && index < effect->params().size()
               ? Kt::dynamicCast<OffsetParam>(effect->paramAt(static_cast<int>(index)))
               : Kt::Ptr<OffsetParam>();
}

IdStamp idAt(const FXViewHandle& handle, unsigned index)
{
    const Kt::Ptr<OffsetParam> param = offsetParamAt(handle, index);
    return param ? param->id() : IdStamp();
}

WString partName(std::size_t line)
{
    static constexpr std::array<int, 4> kNames{TextIds::kLevel, TextIds::kRed, TextIds::kGreen, TextIds::kBlue};
    return displayText(kNames[line]);
}

/** How far the offset goes at the rim: half of the way to the nearest limit, so that a hand can set it well. */
double reachOf(const OffsetParam& param)
{
    double least = 2.0;
    for (std::size_t i = 0; i < 3; ++i)
        for (const double limit : {param.getMin()[i], param.getMax()[i]})
            if (const double distance = std::abs(limit - param.getDefault()[i]); distance > 0.0)
                least = std::min(least, distance);
    return least / 2.0;
}

} // namespace

ColourOffsetPanel::ColourOffsetPanel(const FXViewHandle& handle, unsigned paramIndex, unsigned short width,
                                     const Palette& palette, Canvas* canvas)
    : KeyframeCtrlsBase(handle, idAt(handle, paramIndex), width,
                        static_cast<unsigned short>(3 * UifStd::getRowHeight()),
                        static_cast<unsigned short>(calcHeight()), canvas)
{
    if (const Kt::Ptr<OffsetParam> param = offsetParamAt(handle, paramIndex)) {
        setLabelWidth(std::max(3 * UifStd::getRowHeight(), calcLabelWidth(*param)));
        wheel_ = addEditor(std::make_unique<ColourWheel>(ColourWheel::InitArgs(0, 0, canvas)),
                           displayText(TextIds::kColourWheel));
        for (std::size_t i = 0; i < kLines; ++i)
            addLine(i, *param);
        applyDisplay(*param);
        wheel_->setDataAdaptor(Kt::makePtr<ColourAdaptor>(handle, EffectValParamAccessor<ColourData>(*param)));
        setKeyframeAdaptor(Kt::makePtr<KeyframeButtonAdaptor<EffectValParamAccessor<ColourData>>>(
            handle, EffectValParamAccessor<ColourData>(*param)));
    }
    setPalette(palette);
    finishRow();
}

int ColourOffsetPanel::calcHeight()
{
    return static_cast<int>(kLines) * UifStd::getRowHeight() + static_cast<int>(kLines + 1) * UifStd::getRowGap();
}

void ColourOffsetPanel::addLine(std::size_t index, const OffsetParam& param)
{
    Line& line = lines_[index];
    const WString part = partName(index);
    Label::InitArgs label(0, 0, canvas());
    label.text = UIString(part);
    line.letter = addToRow(std::make_unique<ScrubLabel>(label));
    line.slider = addEditor(std::make_unique<ValSlider>(Slider::InitArgs(0, 0, canvas())), part);
    line.entry = addEntry(part, false);
    line.letter->setEntry(line.entry);
    if (index == 0) {
        line.slider->setDataAdaptor(Kt::makePtr<ColourLevelAdaptor>(getViewHandle(), ColourLevelAccessor(param)));
        line.entry->setDataAdaptor(
            Kt::makePtr<ColourLevelTextAdaptor>(getViewHandle(), ColourLevelTextAccessor(param)));
        return;
    }
    const auto component = static_cast<unsigned>(index - 1);
    line.slider->setDataAdaptor(
        Kt::makePtr<ColourComponentAdaptor>(getViewHandle(), ColCompAccessor<double>(param, component)));
    line.entry->setDataAdaptor(
        Kt::makePtr<ColourComponentTextAdaptor>(getViewHandle(), ColourComponentTextAccessor(param, component)));
}

void ColourOffsetPanel::applyDisplay(const OffsetParam& param)
{
    wheel_->setReach(reachOf(param));
    for (std::size_t i = 0; i < kLines; ++i) {
        const std::size_t component = i == 0 ? 0 : i - 1;
        const double standard = i == 0 ? levelOf(param.getDefault()) : param.getDefault()[component];
        const NumberDisplay display = NumberDisplay::of(param, component);
        applyTo(*lines_[i].slider, display, standard);
        applyTo(*lines_[i].entry, display, standard);
        lines_[i].slider->setOrigin(standard);
    }
}

void ColourOffsetPanel::handleParamReplaced(EffectValParamBase& param)
{
    if (const auto* offset = dynamic_cast<const OffsetParam*>(&param); offset && wheel_)
        applyDisplay(*offset);
}

void ColourOffsetPanel::layoutEditors(const Kt::Box<int>& area)
{
    if (!wheel_)
        return;
    const int gap = UifStd::getWidgetGap();
    const int rowGap = UifStd::getRowGap();
    const int side = std::min(area.height() - 2 * rowGap, std::max(0, area.width() - calcValEntryWidth()));
    wheel_->setPosition({area.left, area.top + (area.height() - side) / 2});
    wheel_->resize({side, side});
    const int left = std::min(area.left + side + 2 * gap, area.right);
    int letterWidth = 0;
    for (std::size_t i = 0; i < kLines; ++i)
        letterWidth = std::max(letterWidth, UifStd::measure(partName(i), font()));
    const int pitch = UifStd::getRowHeight() + rowGap;
    for (std::size_t i = 0; i < kLines; ++i) {
        const int top = area.top + rowGap + static_cast<int>(i) * pitch;
        layoutLine(lines_[i], {left, top, area.right, top + UifStd::getRowHeight()}, letterWidth);
    }
}

void ColourOffsetPanel::layoutLine(const Line& line, const Kt::Box<int>& area, int letterWidth) const
{
    const int gap = UifStd::getWidgetGap();
    const bool hasName = area.width() >= letterWidth + gap + calcValEntryWidth();
    const int nameRight = hasName ? area.left + letterWidth + gap : area.left;
    line.letter->setVisible(hasName);
    line.letter->setPosition(area.topLeft());
    line.letter->resize({letterWidth, area.height()});
    const Kt::Box<int> rest{nameRight, area.top, area.right, area.bottom};
    // A slider of a few pixels is of no use.
    if (rest.width() > calcValEntryWidth() + 2 * UifStd::getRowHeight()) {
        putSliderAndEntry(rest, *line.slider, *line.entry);
        return;
    }
    putInto(*line.entry, {std::max(rest.left, rest.right - calcValEntryWidth()), rest.top, rest.right, rest.bottom});
    line.slider->setVisible(false);
}

} // namespace oribund
