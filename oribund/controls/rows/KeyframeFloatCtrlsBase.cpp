#include "oribund/controls/rows/KeyframeFloatCtrlsBase.h"

#include "oribund/controls/binding/EffectValParamAdaptor.h"
#include "oribund/controls/rows/KeyframeButtonAdaptor.h"
#include "oribund/host/canvas/UifStd.h"
#include "oribund/host/toolkit/entries/NumericEntry.h"
#include "oribund/host/toolkit/widgets/ValSlider.h"

namespace oribund
{

KeyframeFloatCtrlsBase::KeyframeFloatCtrlsBase(const FXViewHandle& handle, Kt::Ptr<EffectValParam<double>> param,
                                               unsigned short width, unsigned short labelWidth,
                                               unsigned short rowHeight, Canvas* canvas, int decimals)
    : KeyframeCtrlsBase(handle, param ? param->id() : IdStamp(), width, labelWidth, rowHeight, canvas)
{
    init(decimals, param.get());
    finishRow();
}

bool KeyframeFloatCtrlsBase::hasNormalisedRange(const EffectValParam<double>* param)
{
    return param && NumberDisplay::isNormalised(*param);
}

bool KeyframeFloatCtrlsBase::usePercentageDisplay(const EffectValParam<double>* param)
{
    return param && NumberDisplay::isPercentage(*param);
}

void KeyframeFloatCtrlsBase::init(int decimals, const EffectValParam<double>* param)
{
    decimals_ = decimals;
    slider_ = addEditor(std::make_unique<ValSlider>(Slider::InitArgs(0, 0, canvas())));
    entry_ = addEntry();
    if (!param)
        return;
    const EffectValParamAccessor<double> accessor(*param);
    applyDisplay(*param);
    slider_->setDataAdaptor(Kt::makePtr<FloatAdaptor>(getViewHandle(), accessor));
    entry_->setDataAdaptor(Kt::makePtr<FloatTextAdaptor>(getViewHandle(), FloatParamAccessor(*param)));
    setKeyframeAdaptor(Kt::makePtr<KeyframeButtonAdaptor<EffectValParamAccessor<double>>>(getViewHandle(), accessor));
}

void KeyframeFloatCtrlsBase::applyDisplay(const EffectValParam<double>& param)
{
    const NumberDisplay display = NumberDisplay::of(param, decimals_);
    applyTo(*slider_, display, param.getDefault());
    applyTo(*entry_, display, param.getDefault());
}

void KeyframeFloatCtrlsBase::handleParamReplaced(EffectValParamBase& param)
{
    if (const auto* number = dynamic_cast<const EffectValParam<double>*>(&param))
        applyDisplay(*number);
}

void KeyframeFloatCtrlsBase::layoutEditors(const Kt::Box<int>& area)
{
    putSliderAndEntry(area, *slider_, *entry_);
}

} // namespace oribund
