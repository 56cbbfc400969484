#include "oribund/controls/rows/KeyframeAngleCtrls.h"

#include "oribund/controls/binding/WholeTurnsParamTextAdaptor.h"
#include "oribund/controls/rows/AngleParamWidget.h"
#include "oribund/controls/rows/KeyframeButtonAdaptor.h"
#include "oribund/host/canvas/UifStd.h"
#include "oribund/host/effects/params/NumberDisplay.h"
#include "oribund/host/services/EditorPreferences.h"
#include "oribund/host/services/TextIds.h"
#include "oribund/host/services/TextTable.h"
#include "oribund/host/toolkit/entries/NumericEntry.h"
#include "oribund/host/toolkit/widgets/ValSlider.h"

#include <algorithm>
#include <optional>

namespace oribund
{

namespace
{

std::optional<bool>& cachedUseDials()
{
    static std::optional<bool> cached;
    return cached;
}

bool isWithinOneTurnEachWay(const EffectValParam<Angle>& param)
{
    return param.getMax().degrees - param.getMin().degrees <= 2.0 * kFullTurn;
}

Kt::Ptr<ValAdaptorBase<double>> makeSliderAdaptor(const FXViewHandle& handle, const EffectValParam<Angle>& param)
{
    if (isWithinOneTurnEachWay(param))
        return Kt::makePtr<AngleAdaptor>(handle, EffectValParamAccessor<Angle>(param));
    return Kt::makePtr<DegreesParamAdaptor<double>>(handle, param);
}

int oneAndAHalfRows()
{
    return UifStd::getRowHeight() * 3 / 2;
}

} // namespace

KeyframeAngleCtrls::KeyframeAngleCtrls(const FXViewHandle& handle, const Kt::Ptr<EffectValParam<Angle>>& param,
                                       unsigned short width, unsigned short labelWidth, Canvas* canvas)
    : KeyframeCtrlsBase(handle, param ? param->id() : IdStamp(), width, labelWidth,
                        static_cast<unsigned short>(calcHeight()), canvas)
{
    if (param)
        addWidgets(*param);
    finishRow();
}

bool KeyframeAngleCtrls::useDials()
{
    std::optional<bool>& cached = cachedUseDials();
    if (!cached)
        cached = prefs().getPreference("use_dials_for_angles", 0) != 0;
    return *cached;
}

void KeyframeAngleCtrls::forgetUseDials()
{
    cachedUseDials().reset();
}

int KeyframeAngleCtrls::calcHeight()
{
    return useDials() ? oneAndAHalfRows() : UifStd::getRowHeight();
}

int KeyframeAngleCtrls::calcWholeTurnsEntryWidth()
{
    return oneAndAHalfRows();
}

NumRange<double> KeyframeAngleCtrls::getSliderValueRange(const EffectValParam<Angle>& param)
{
    return NumberDisplay::of(param).slider;
}

void KeyframeAngleCtrls::addWidgets(const EffectValParam<Angle>& param)
{
    if (useDials()) {
        const auto side = static_cast<unsigned short>(calcHeight() - UifStd::getRowGap());
        const AngleIndicatorWidget::InitArgs args(side, side, canvas());
        dial_ = addEditor(std::make_unique<AngleParamWidget>(args, getViewHandle(), param));
    } else {
        slider_ = addEditor(std::make_unique<ValSlider>(Slider::InitArgs(0, 0, canvas())));
    }
    // The name stands for the degrees, which come behind the turns.
    turns_ = addEntry(displayText(TextIds::kWholeTurnsPart), false);
    degrees_ = addEntry();
    applyDisplay(param);
    turns_->setDataAdaptor(Kt::makePtr<WholeTurnsParamTextAdaptor>(getViewHandle(), param));
    degrees_->setDataAdaptor(Kt::makePtr<DegreesParamAdaptor<WString>>(getViewHandle(), param));
    setKeyframeAdaptor(Kt::makePtr<KeyframeButtonAdaptor<EffectValParamAccessor<Angle>>>(
        getViewHandle(), EffectValParamAccessor<Angle>(param)));
}

void KeyframeAngleCtrls::applyDisplay(const EffectValParam<Angle>& param)
{
    const double standard = param.getDefault().degrees;
    const NumberDisplay display = NumberDisplay::of(param);
    applyTo(*degrees_, display, standard);
    if (slider_) {
        applyTo(*slider_, display, standard);
        slider_->setDataAdaptor(makeSliderAdaptor(getViewHandle(), param));
    }
    turns_->setFormat(NumberDisplay::turnsFormat());
    turns_->setStep(1.0);
    turns_->setTooltip(UIString(TextIds::kWholeTurns));
    updateWidgetVisibility(param);
}

void KeyframeAngleCtrls::handleParamReplaced(EffectValParamBase& param)
{
    if (const auto* angle = dynamic_cast<const EffectValParam<Angle>*>(&param))
        applyDisplay(*angle);
}

void KeyframeAngleCtrls::updateWidgetVisibility(const EffectValParam<Angle>& param)
{
    showsTurns_ = NumberDisplay::showsTurns(param);
    relayout();
}

unsigned short KeyframeAngleCtrls::calcSliderWidth() const
{
    const int gap = UifStd::getWidgetGap();
    int width = getUserArea().width() - calcNameWidth() - calcValEntryWidth() - 3 * gap;
    if (!useDials() && showsTurns_)
        width -= calcWholeTurnsEntryWidth() + gap;
    return static_cast<unsigned short>(std::clamp(width, 0, 0xffff));
}

void KeyframeAngleCtrls::layoutEditors(const Kt::Box<int>& area)
{
    if (!degrees_)
        return;
    const int gap = UifStd::getWidgetGap();
    const int degreesLeft = std::max(area.left, area.right - calcValEntryWidth());
    putInto(*degrees_, {degreesLeft, area.top, area.right, area.bottom});
    const int turnsLeft = degreesLeft - gap - calcWholeTurnsEntryWidth();
    putInto(*turns_, {turnsLeft, area.top, showsTurns_ ? degreesLeft - gap : turnsLeft, area.bottom});
    if (slider_)
        putInto(*slider_, {area.left, area.top, area.left + calcSliderWidth(), area.bottom});
    if (dial_)
        dial_->setPosition({area.left, area.top + (area.height() - dial_->getHeight()) / 2});
}

} // namespace oribund
