#include "oribund/controls/rows/KeyframeColourCtrls.h"

#include "oribund/controls/binding/SwatchAdaptor.h"
#include "oribund/controls/rows/KeyframeButtonAdaptor.h"
#include "oribund/host/canvas/UifStd.h"
#include "oribund/host/services/TextIds.h"
#include "oribund/host/services/TextTable.h"
#include "oribund/host/toolkit/widgets/Button.h"
#include "oribund/host/toolkit/widgets/ValColourSwatch.h"

#include <algorithm>

namespace oribund
{

namespace
{

bool has(KeyframeColourCtrls::Opts options, KeyframeColourCtrls::Opts bit)
{
    return (static_cast<unsigned>(options) & static_cast<unsigned>(bit)) != 0;
}

} // namespace

/** Opens the swatch's chooser. It hangs on the swatch's adaptor to be disabled together with it. */
class KeyframeColourCtrls::PickerButton final : public Button, public ValView<ColourData>
{
public:
    PickerButton(const InitArgs& args, ValColourSwatch& swatch)
        : Button(args)
        , swatch_(swatch)
    {
        setTooltip(UIString(TextIds::kChooseColour));
    }

    void setWidgetValue(const ColourData& value, eRedrawFlag) override { value_ = value; }

    ColourData getWidgetValue() const override { return value_; }

    void setWidgetEnabled(bool enabled) override { setEnabled(enabled); }

    bool isWidgetEnabled() const override { return isEnabled(); }

protected:
    void handleClick() override { swatch_.userClick(); }

private:
    ValColourSwatch& swatch_;
    ColourData value_;
};

KeyframeColourCtrls::KeyframeColourCtrls(const FXViewHandle& handle, const IdStamp& paramId, unsigned short width,
                                         unsigned short labelWidth, unsigned short rowHeight, Canvas* canvas,
                                         Opts options)
    : KeyframeCtrlsBase(handle, paramId, width, labelWidth, rowHeight, canvas)
{
    ColourSwatch::InitArgs args(0, 0, canvas);
    args.hasAlpha = has(options, Opts::eOpacity);
    swatch_ = addEditor(std::make_unique<ValColourSwatch>(args));
    if (!has(options, Opts::eNoPickerButton)) {
        Button::InitArgs button(0, 0, canvas);
        button.icon = Image::icon("collapse");
        picker_ = addEditor(std::make_unique<PickerButton>(button, *swatch_), displayText(TextIds::kChooserPart));
    }
    finishRow();
}

void KeyframeColourCtrls::setParam(EffectValParamBase* param)
{
    auto* const colour = dynamic_cast<EffectValParam<ColourData>*>(param);
    setParamId(colour ? colour->id() : IdStamp());
    Kt::Ptr<ValAdaptorBase<ColourData>> adaptor;
    Kt::Ptr<ValAdaptorBase<String>> keyframes;
    if (colour) {
        adaptor = Kt::makePtr<SwatchAdaptor>(getViewHandle(), *colour);
        keyframes = Kt::makePtr<KeyframeButtonAdaptor<EffectValParamAccessor<ColourData>>>(
            getViewHandle(), EffectValParamAccessor<ColourData>(*colour));
    }
    // First the button: the adaptor asks the first of its widgets whether it is enabled.
    if (picker_)
        picker_->setAdaptor(adaptor);
    swatch_->setDataAdaptor(adaptor);
    setKeyframeAdaptor(keyframes);
}

void KeyframeColourCtrls::layoutEditors(const Kt::Box<int>& area)
{
    const int side = picker_ ? UifStd::getControlHeight() : 0;
    const int right = std::min(area.right - side, area.left + 3 * UifStd::getRowHeight());
    putInto(*swatch_, {area.left, area.top, right, area.bottom});
    if (picker_)
        putInto(*picker_, {right, area.top, right + side, area.bottom});
}

} // namespace oribund
