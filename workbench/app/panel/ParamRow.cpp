#include "workbench/app/panel/ParamRow.h"

#include "oribund/controls/AngleParamWidget.h"
#include "oribund/controls/DegreesParamAdaptor.h"
#include "oribund/controls/EffectValParamAdaptor.h"
#include "oribund/controls/KeyframeButtonAdaptor.h"
#include "oribund/host/canvas/UifStd.h"
#include "oribund/host/effects/EffectInstance.h"
#include "oribund/host/effects/ParamVisitor.h"
#include "oribund/host/services/TextTable.h"
#include "oribund/host/toolkit/Label.h"
#include "oribund/host/toolkit/NumericEntry.h"
#include "oribund/host/toolkit/ValButton.h"
#include "oribund/host/toolkit/ValCheckbox.h"
#include "oribund/host/toolkit/ValColourSwatch.h"
#include "oribund/host/toolkit/ValMenuButton.h"
#include "oribund/host/toolkit/ValSlider.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace workbench
{

using namespace oribund;

namespace
{

/** Where a slider ends for a parameter that has no end of its own. */
constexpr double kWidestSlider = 1e6;

WString nameOf(const EffectValParamBase& param)
{
    const WString name = displayText(param.description());
    return param.unitText().empty() ? name : name + L" (" + param.unitText() + L")";
}

int entryWidth()
{
    return Button::calcSizeFor(L"-100.123456").x;
}

void addKeyframeLooks(ValButton& button)
{
    button.addLook({KeyframeState::kNone, Image::icon("keyframe-off"), Button::eOff,
                    UIString(L"Not animated: click to set the first keyframe")});
    button.addLook({KeyframeState::kElsewhere, Image::icon("keyframe-away"), Button::eOff,
                    UIString(L"Animated, no keyframe here: click to add one")});
    button.addLook({KeyframeState::kHere, Image::icon("keyframe-here"), Button::eOn,
                    UIString(L"Keyframe here: click to remove it")});
}

} // namespace

/** Fills a row according to the type of its parameter. Controls stand side by side from the end of the name on. */
class ParamRow::Maker final : public ParamVisitor
{
public:
    Maker(ParamRow& row, const FXViewHandle& handle, const EffectValParamBase& param, int nameWidth)
        : row_(row)
        , handle_(handle)
        , name_(nameOf(param))
        , gap_(UifStd::getWidgetGap())
        , controlHeight_(UifStd::getControlHeight())
        , left_(nameWidth + gap_)
        , room_(std::max(0, row.getUserArea().width() - left_))
    {
        addName(nameWidth);
    }

    void visit(EffectValParam<double>& param) override
    {
        addKeyframeButton<EffectValParamAccessor<double>>(param);
        const auto adaptor = Kt::makePtr<FloatAdaptor>(handle_, EffectValParamAccessor<double>(param));
        const auto text = Kt::makePtr<FloatTextAdaptor>(handle_, FloatParamAccessor(param));
        addSlider(rangeOf(param), param.getDefault(), room_ - entryWidth() - gap_, name_)
            .setDataAdaptor(Kt::Ptr<ValAdaptorBase<double>>(adaptor));
        addEntry(stepOf(rangeOf(param))).setDataAdaptor(Kt::Ptr<ValAdaptorBase<WString>>(text));
    }

    void visit(EffectValParam<Angle>& param) override
    {
        addKeyframeButton<EffectValParamAccessor<Angle>>(param);
        AngleIndicatorWidget::InitArgs args(dimension(UifStd::getRowHeight()), dimension(UifStd::getRowHeight()));
        add(std::make_unique<AngleParamWidget>(args, handle_, param), 0).setAccessibleName(UIString(name_));
        addEntry(1.0).setDataAdaptor(
            Kt::Ptr<ValAdaptorBase<WString>>(Kt::makePtr<RawDegreesParamAdaptor<WString>>(handle_, param)));
    }

    void visit(EffectValParam<Vector2d>& param) override
    {
        addKeyframeButton<PosAccessor>(param, 0u);
        const int width = (room_ - gap_) / 2;
        const Vector2d low = param.getMin();
        const Vector2d high = param.getMax();
        addCoordinate(param, 0, {low.x, high.x}, param.getDefault().x, width, L"X");
        addCoordinate(param, 1, {low.y, high.y}, param.getDefault().y, width, L"Y");
    }

    void visit(EffectValParam<ColourData>& param) override
    {
        addKeyframeButton<EffectValParamAccessor<ColourData>>(param);
        ColourSwatch::InitArgs args(dimension(3 * UifStd::getRowHeight()), dimension(controlHeight_));
        args.hasAlpha = true;
        const auto adaptor = Kt::makePtr<ColourAdaptor>(handle_, EffectValParamAccessor<ColourData>(param));
        adaptor->setInChangeSeries(true);
        bind(std::make_unique<ValColourSwatch>(args), adaptor);
    }

    void visit(EffectValParam<bool>& param) override
    {
        Checkbox::InitArgs args(dimension(controlHeight_), dimension(controlHeight_));
        bind(std::make_unique<ValCheckbox>(args),
             Kt::makePtr<BoolAdaptor>(handle_, EffectValParamAccessor<bool>(param)));
    }

    void visit(EffectValParam<ListParam<int>>& param) override { addList<IntListAdaptor>(param); }

    void visit(EffectValParam<ListParam<String>>& param) override { addList<TextListAdaptor>(param); }

    void visit(EffectValParam<VideoInputParam>& param) override
    {
        std::vector<UIString> items;
        for (const WString& input : param.constant().inputNames())
            items.emplace_back(input);
        addMenu(std::move(items),
                Kt::makePtr<VideoInputAdaptor>(handle_, EffectValParamAccessor<VideoInputParam>(param)));
    }

private:
    using Range = std::pair<double, double>;

    static unsigned short dimension(int pixels) { return static_cast<unsigned short>(std::clamp(pixels, 0, 65535)); }

    static Range rangeOf(const EffectValParam<double>& param)
    {
        return {std::max(param.getMin(), -kWidestSlider), std::min(param.getMax(), kWidestSlider)};
    }

    /** A hundredth of the range, as a round number: what an arrow key changes. */
    static double stepOf(const Range& range)
    {
        return std::pow(10.0, std::floor(std::log10(std::max(range.second - range.first, 1e-6) / 50.0)));
    }

    void addName(int nameWidth)
    {
        const int buttonWidth = controlHeight_ + gap_ / 2;
        Label::InitArgs args(dimension(nameWidth - buttonWidth), dimension(row_.getHeight()));
        args.text = UIString(name_);
        row_.addWidget(std::make_unique<Label>(args), UserTopLeft(buttonWidth, 0));
    }

    /** Adds a control beside the last one, in the middle of the row's height. */
    template <class W>
    W& add(std::unique_ptr<W> control, int gapBefore)
    {
        left_ += gapBefore;
        const WidgetPosition place = UserTopLeft(left_, (row_.getHeight() - control->getHeight()) / 2);
        left_ += control->getWidth();
        control->setAccessibleName(UIString(name_));
        W& added = *row_.addWidget(std::move(control), place);
        row_.addTabStop(&added);
        return added;
    }

    template <class W, class Adaptor>
    W& bind(std::unique_ptr<W> control, const Kt::Ptr<Adaptor>& adaptor, int gapBefore = 0)
    {
        W& added = add(std::move(control), gapBefore);
        added.setDataAdaptor(Kt::Ptr<ValAdaptorBase<typename Adaptor::ValueType>>(adaptor));
        return added;
    }

    template <class Accessor, class P, class... More>
    void addKeyframeButton(const EffectValParam<P>& param, More... more)
    {
        if (!param.isKeyframable())
            return;
        Button::InitArgs args(dimension(controlHeight_), dimension(controlHeight_));
        args.style = Button::Style::Flat;
        auto button = std::make_unique<ValButton>(args);
        addKeyframeLooks(*button);
        button->setAccessibleName(UIString(name_ + L": keyframe"));
        const WidgetPosition place = UserTopLeft(0, (row_.getHeight() - controlHeight_) / 2);
        ValButton& added = *row_.addWidget(std::move(button), place);
        row_.addTabStop(&added);
        added.setDataAdaptor(Kt::Ptr<ValAdaptorBase<String>>(
            Kt::makePtr<KeyframeButtonAdaptor<Accessor>>(handle_, Accessor(param, more...))));
    }

    ValSlider& addSlider(const Range& range, double standard, int width, const WString& name, int gapBefore = 0)
    {
        Slider::InitArgs args(dimension(width), dimension(controlHeight_));
        args.min = range.first;
        args.max = range.second;
        args.step = stepOf(range);
        args.page = 10 * args.step;
        args.resetValue = standard;
        ValSlider& slider = add(std::make_unique<ValSlider>(args), gapBefore);
        slider.setAccessibleName(UIString(name));
        return slider;
    }

    void addCoordinate(const EffectValParam<Vector2d>& param, unsigned index, const Range& range, double standard,
                       int width, const wchar_t* letter)
    {
        const Range usable{std::max(range.first, -kWidestSlider), std::min(range.second, kWidestSlider)};
        ValSlider& slider = addSlider(usable, standard, width, name_ + L" " + letter, index == 0 ? 0 : gap_);
        slider.setTooltip(UIString(name_ + L" " + letter));
        slider.setDataAdaptor(
            Kt::Ptr<ValAdaptorBase<double>>(Kt::makePtr<PositionAdaptor>(handle_, PosAccessor(param, index))));
    }

    NumericEntry& addEntry(double step)
    {
        TextBox::InitArgs args(dimension(entryWidth()), dimension(controlHeight_));
        args.align = TextAlign::Right;
        NumericEntry& entry = add(std::make_unique<NumericEntry>(args), gap_);
        entry.setStep(step);
        return entry;
    }

    template <class Adaptor, class X>
    void addList(EffectValParam<ListParam<X>>& param)
    {
        std::vector<UIString> items;
        for (const auto& item : param.constant().items())
            items.push_back(item.label);
        addMenu(std::move(items), Kt::makePtr<Adaptor>(handle_, EffectValParamAccessor<ListParam<X>>(param)));
    }

    template <class Adaptor>
    void addMenu(std::vector<UIString> items, const Kt::Ptr<Adaptor>& adaptor)
    {
        DropDownMenuButton::InitArgs args(0, dimension(controlHeight_));
        args.items = std::move(items);
        auto menu = std::make_unique<ValMenuButton>(args);
        menu->autoSize();
        menu->Glob::resize({std::min(menu->getWidth(), room_), controlHeight_});
        bind(std::move(menu), adaptor);
    }

    ParamRow& row_;
    FXViewHandle handle_;
    WString name_;
    int gap_;
    int controlHeight_;
    int left_;
    int room_;
};

int ParamRow::calcNameWidth(const EffectValParamBase& param)
{
    return UifStd::getControlHeight() + UifStd::getWidgetGap() + UifStd::measure(nameOf(param));
}

ParamRow::ParamRow(const InitArgs& args, const FXViewHandle& handle, EffectValParamBase& param)
    : StandardPanel(args)
{
    Maker maker(*this, handle, param, args.nameWidth);
    param.accept(maker);
}

ParamRow::~ParamRow() = default;

} // namespace workbench
