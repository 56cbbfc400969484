// The controls that FXPanelGenerator makes, one for each type of value.

#include "oribund/panels/ParamControls.h"

#include "oribund/colour/ColourOffsetPanel.h"
#include "oribund/colour/ColourRangePanel.h"
#include "oribund/colour/TitledTonalRangeEditor.h"
#include "oribund/controls/binding/EffectValParamAdaptor.h"
#include "oribund/controls/rows/InputSelector.h"
#include "oribund/controls/rows/KeyframeAngleCtrls.h"
#include "oribund/controls/rows/KeyframeColourCtrls.h"
#include "oribund/controls/rows/KeyframeFloatCtrlsBase.h"
#include "oribund/controls/rows/ParamMenuButton.h"
#include "oribund/controls/rows/TitledVector2dControl.h"
#include "oribund/host/canvas/UifStd.h"
#include "oribund/host/effects/params/ParamText.h"
#include "oribund/host/effects/params/ParamVisitor.h"
#include "oribund/host/toolkit/menus/ValMenuButton.h"
#include "oribund/host/toolkit/widgets/Label.h"
#include "oribund/host/toolkit/widgets/ValCheckbox.h"
#include "oribund/panels/FXPanelGenerator.h"

namespace oribund
{

namespace
{

struct ControlFinder {
    ParamControl operator()(const EffectValParam<double>&) const { return ParamControl::Number; }

    ParamControl operator()(const EffectValParam<Angle>&) const { return ParamControl::Angle; }

    ParamControl operator()(const EffectValParam<ColourData>& param) const
    {
        if (param.displayFlags() & ParamDisplay::kColourRange)
            return ParamControl::ColourRange;
        if (param.displayFlags() & ParamDisplay::kColourOffset)
            return ParamControl::ColourOffset;
        if (param.displayFlags() & ParamDisplay::kTonalRanges)
            return ParamControl::TonalRanges;
        // Where every colour is as opaque as any other there is no opacity to choose.
        return param.getMin().values[3] < param.getMax().values[3] ? ParamControl::Colour : ParamControl::OpaqueColour;
    }

    ParamControl operator()(const EffectValParam<Vector2d>&) const { return ParamControl::Point; }

    ParamControl operator()(const EffectValParam<bool>&) const { return ParamControl::Switch; }

    ParamControl operator()(const EffectValParam<ListParam<int>>&) const { return ParamControl::NumberChoice; }

    ParamControl operator()(const EffectValParam<ListParam<String>>&) const { return ParamControl::TextChoice; }

    ParamControl operator()(const EffectValParam<VideoInputParam>&) const { return ParamControl::VideoInput; }
};

/** A check box as wide as its row, of which only what is to be seen can be clicked. */
class SwitchBox final : public ValCheckbox
{
public:
    using ValCheckbox::ValCheckbox;

    bool hitTest(const XY<int>& local) const override
    {
        return ValCheckbox::hitTest(local) && local.x < textOffset() + UifStd::measure(getText(), font());
    }
};

TitledMenuButtonPlain::InitArgs menuArgs(const WString& name, int nameWidth, unsigned short width, Canvas* canvas)
{
    TitledMenuButtonPlain::InitArgs args(width, 0, canvas);
    args.title = UIString(name);
    args.titleWidth = static_cast<unsigned short>(nameWidth);
    return args;
}

} // namespace

ParamControl paramControlOf(const EffectValParamBase& param)
{
    ParamControl control = ParamControl::Number;
    // Visitors may change what they visit; this one does not.
    visitParam(const_cast<EffectValParamBase&>(param), [&](const auto& typed) { control = ControlFinder()(typed); });
    return control;
}

WidgetSurround surroundOf(ParamControl control)
{
    WidgetSurround surround = FXPanelGenerator::getGroupSeparator();
    // These have no keyframe button, but leave its room.
    if (control == ParamControl::Switch)
        surround.left = KeyframeCtrlsBase::nameOffset() - Checkbox::textOffset();
    else if (control == ParamControl::NumberChoice || control == ParamControl::TextChoice ||
             control == ParamControl::VideoInput)
        surround.left = KeyframeCtrlsBase::nameOffset();
    return surround;
}

void setNameWidth(Glob& control, int width)
{
    if (auto* const row = dynamic_cast<KeyframeCtrlsBase*>(&control))
        row->setLabelWidth(width);
    else if (auto* const menu = dynamic_cast<TitledMenuButtonPlain*>(&control))
        menu->setTitleWidth(width);
    else if (auto* const ranges = dynamic_cast<ColourRangePanel*>(&control))
        ranges->setLabelWidth(width);
    else if (auto* const tones = dynamic_cast<TitledTonalRangeEditor*>(&control))
        tones->setLabelWidth(width);
}

void refreshName(Glob& control, const EffectValParamBase& param, const WString& name)
{
    if (auto* const row = dynamic_cast<KeyframeCtrlsBase*>(&control)) {
        row->setParamName(name);
    } else if (auto* const menu = dynamic_cast<TitledMenuButtonPlain*>(&control)) {
        menu->title().setText(UIString(name));
        menu->menuButton().setAccessibleName(UIString(name));
    } else if (auto* const box = dynamic_cast<Checkbox*>(&control)) {
        box->setText(UIString(name));
        box->setTooltip(UIString(paramTooltip(param)));
    }
}

// One for each type

Glob* FXPanelGenerator::createParamUI(const Kt::Ptr<EffectValParam<VideoInputParam>>& param, unsigned short width,
                                      Canvas* canvas)
{
    auto selector = std::make_unique<InputSelector>(target_, *param,
                                                    menuArgs(makeParamName(param), calcLabelWidth(), width, canvas));
    selector->setTitleResize(TitledMenuButtonPlain::TitleResize::Shrinks);
    return selector.release();
}

Glob* FXPanelGenerator::createParamUI(const Kt::Ptr<EffectValParam<ListParam<int>>>& param, unsigned short width,
                                      Canvas* canvas)
{
    auto menu = std::make_unique<ParamMenuButton>(
        target_, *param, menuArgs(makeParamName(param), calcLabelWidth(), width, canvas),
        Kt::makePtr<IntListAdaptor>(target_, EffectValParamAccessor<ListParam<int>>(*param)));
    menu->setTitleResize(TitledMenuButtonPlain::TitleResize::Shrinks);
    return menu.release();
}

Glob* FXPanelGenerator::createParamUI(const Kt::Ptr<EffectValParam<ListParam<String>>>& param, unsigned short width,
                                      Canvas* canvas)
{
    auto menu = std::make_unique<ParamMenuButton>(
        target_, *param, menuArgs(makeParamName(param), calcLabelWidth(), width, canvas),
        Kt::makePtr<TextListAdaptor>(target_, EffectValParamAccessor<ListParam<String>>(*param)));
    menu->autoSize();
    return menu.release();
}

Glob* FXPanelGenerator::createParamUI(const Kt::Ptr<EffectValParam<bool>>& param, unsigned short width, Canvas* canvas)
{
    Checkbox::InitArgs args(width, static_cast<unsigned short>(UifStd::getRowHeight()), canvas);
    args.text = UIString(makeParamName(param));
    auto box = std::make_unique<SwitchBox>(args);
    box->setTooltip(UIString(paramTooltip(*param)));
    box->setDataAdaptor(Kt::makePtr<BoolAdaptor>(target_, EffectValParamAccessor<bool>(*param)));
    return box.release();
}

Glob* FXPanelGenerator::createParamUI(const Kt::Ptr<EffectValParam<Vector2d>>& param, unsigned short width,
                                      Canvas* canvas)
{
    auto row = std::make_unique<TitledVector2dControl>(target_, *param, width, calcLabelWidth(), canvas);
    row->setParamName(makeParamName(param));
    return row.release();
}

Glob* FXPanelGenerator::createParamUI(const Kt::Ptr<EffectValParam<ColourData>>& param, unsigned short width,
                                      Canvas* canvas)
{
    const Kt::Ptr<EffectInstance> effect = target_.getEffectPtr();
    const auto index = static_cast<unsigned>(effect ? effect->indexOfParam(param->id()) : -1);
    const ParamControl control = paramControlOf(*param);
    if (control == ParamControl::ColourRange)
        return new ColourRangePanel(target_, index, width, palette_, canvas);
    if (control == ParamControl::ColourOffset)
        return new ColourOffsetPanel(target_, index, width, palette_, canvas);
    if (control == ParamControl::TonalRanges) {
        auto editor = std::make_unique<TitledTonalRangeEditor>(makeParamName(param), width, palette_, canvas);
        editor->setDataAdaptor(Kt::makePtr<ColourRangeAdaptor>(target_, ColRangeInterfaceTraits(*param)));
        return editor.release();
    }
    auto row = std::make_unique<KeyframeColourCtrls>(
        target_, param->id(), width, calcLabelWidth(), 0, canvas,
        control == ParamControl::Colour ? KeyframeColourCtrls::Opts::eOpacity : KeyframeColourCtrls::Opts::eNone);
    row->setParam(param.get());
    row->setParamName(makeParamName(param));
    return row.release();
}

Glob* FXPanelGenerator::createParamUI(const Kt::Ptr<EffectValParam<Angle>>& param, unsigned short width, Canvas* canvas)
{
    auto row = std::make_unique<KeyframeAngleCtrls>(target_, param, width, calcLabelWidth(), canvas);
    row->setParamName(makeParamName(param));
    return row.release();
}

Glob* FXPanelGenerator::createParamUI(const Kt::Ptr<EffectValParam<double>>& param, unsigned short width,
                                      Canvas* canvas)
{
    auto row = std::make_unique<KeyframeFloatCtrlsBase>(target_, param, width, calcLabelWidth(),
                                                        static_cast<unsigned short>(UifStd::getRowHeight()), canvas);
    row->setParamName(makeParamName(param));
    return row.release();
}

} // namespace oribund
