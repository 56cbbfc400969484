#include "oribund/controls/rows/KeyframeCtrlsBase.h"

#include "oribund/controls/binding/ParamReset.h"
#include "oribund/controls/rows/KeyframeButton.h"
#include "oribund/host/canvas/UifStd.h"
#include "oribund/host/effects/EffectInstance.h"
#include "oribund/host/effects/params/NumberDisplay.h"
#include "oribund/host/effects/params/ParamText.h"
#include "oribund/host/services/TextIds.h"
#include "oribund/host/toolkit/core/Event.h"
#include "oribund/host/toolkit/core/GlobChange.h"
#include "oribund/host/toolkit/entries/NumericEntry.h"
#include "oribund/host/toolkit/entries/ScrubLabel.h"
#include "oribund/host/toolkit/widgets/Slider.h"

#include <algorithm>
#include <utility>

namespace oribund
{

namespace
{

GlobCreationInfo rowInfo(unsigned short width, unsigned short height, Canvas* canvas)
{
    return {width, height ? height : static_cast<unsigned short>(UifStd::getRowHeight()), canvas};
}

} // namespace

/** The name, on which a double click sets the default, and whose tooltip says what there is to know of the parameter.
 */
class KeyframeCtrlsBase::NameLabel final : public ScrubLabel
{
public:
    NameLabel(const InitArgs& args, KeyframeCtrlsBase& row)
        : ScrubLabel(args)
        , row_(row)
    {
    }

    UIString tooltip() const override
    {
        const WString text = row_.shownParam_ ? paramTooltip(*row_.shownParam_) : WString();
        return text.empty() ? ScrubLabel::tooltip() : UIString(text);
    }

    void paramChanged() { changed(GlobChange::kTooltip); }

protected:
    bool handleMouseEvent(const Event& event) override
    {
        if (event.code != EventCode::MouseDoubleClick || event.button != MouseButton::Left)
            return ScrubLabel::handleMouseEvent(event);
        row_.userReset();
        return true;
    }

private:
    KeyframeCtrlsBase& row_;
};

KeyframeCtrlsBase::KeyframeCtrlsBase(const FXViewHandle& handle, const IdStamp& paramId, unsigned short width,
                                     unsigned short labelWidth, unsigned short rowHeight, Canvas* canvas)
    : StandardPanel(rowInfo(width, rowHeight, canvas))
    , FXVobClient(handle)
    , finder_(paramId)
    , labelWidth_(labelWidth)
{
    beginLayoutHold(); // until all editors are there
    button_ = addToRow(std::make_unique<KeyframeButton>(canvas));
    button_->setVisible(false);
    Label::InitArgs args(labelWidth, static_cast<unsigned short>(getHeight()), canvas);
    label_ = addToRow(std::make_unique<NameLabel>(args, *this));
    if (const Kt::Ptr<FXVob>& fxVob = getFXVob())
        goneCallback_.attach(fxVob->vobGone());
    shownParam_ = getEffectParam();
    if (!shownParam_)
        return;
    keyframable_ = shownParam_->isKeyframable();
    setParamName(rowNameOf(*shownParam_));
}

KeyframeCtrlsBase::~KeyframeCtrlsBase() = default;

NumericEntry* KeyframeCtrlsBase::addEntry(const WString& part, bool isNamed)
{
    TextBox::InitArgs args(0, 0, canvas());
    args.align = TextAlign::Right;
    NumericEntry* const entry = addEditor(std::make_unique<NumericEntry>(args), part);
    if (isNamed)
        label_->setEntry(entry);
    return entry;
}

void KeyframeCtrlsBase::applyTo(Slider& slider, const NumberDisplay& display, double standard)
{
    slider.setRange(display.slider.start(), display.slider.end());
    slider.setSteps(display.step, 10.0 * display.step);
    slider.setResetValue(standard);
}

void KeyframeCtrlsBase::applyTo(NumericEntry& entry, const NumberDisplay& display, double standard)
{
    entry.setFormat(display.format);
    entry.setStep(display.step);
    entry.setResetValue(standard);
}

void KeyframeCtrlsBase::finishRow()
{
    setEnabled(static_cast<bool>(shownParam_));
    nameWidgets();
    endLayoutHold();
    relayout();
}

Kt::Ptr<EffectValParamBase> KeyframeCtrlsBase::getEffectParam() const
{
    return Kt::Ptr<EffectValParamBase>(finder_.find(getEffectPtr()));
}

// What it says

void KeyframeCtrlsBase::setParamName(const WString& name)
{
    if (name == paramName_)
        return;
    paramName_ = name;
    nameWidgets();
}

void KeyframeCtrlsBase::nameWidgets()
{
    label_->setText(UIString(paramName_));
    button_->setParamName(paramName_);
    for (const Editor& editor : editors_) {
        const UIString ofPart =
            UIString(TextIds::kPartOf).withPlaceholder(L"NAME", paramName_).withPlaceholder(L"PART", editor.part);
        editor.glob->setAccessibleName(editor.part.empty() ? UIString(paramName_) : ofPart);
    }
}

void KeyframeCtrlsBase::setParamIsKeyframable(bool keyframable)
{
    keyframable_ = keyframable;
    button_->setVisible(keyframable && button_->getDataAdaptor());
}

void KeyframeCtrlsBase::setKeyframeAdaptor(const Kt::Ptr<ValAdaptorBase<String>>& adaptor)
{
    button_->setDataAdaptor(adaptor);
    setParamIsKeyframable(keyframable_);
}

// What it follows

void KeyframeCtrlsBase::handleFXModifications(const CompoundEffectMonitorClient::ChangeDescription& change)
{
    constexpr unsigned kSameParams = ChangeDescription::kTimeOnly | ChangeDescription::kToldByParams;
    if (!(change.flags & kSameParams))
        followParam();
}

int KeyframeCtrlsBase::handleVobGone(const FXVob&)
{
    followParam();
    return 0;
}

void KeyframeCtrlsBase::setParamId(const IdStamp& paramId)
{
    finder_ = ParamFinder(paramId);
    followParam();
}

void KeyframeCtrlsBase::followParam()
{
    const Kt::Ptr<EffectValParamBase> param = getEffectParam();
    if (param == shownParam_)
        return;
    const RedrawHold hold;
    const GlobRef<KeyframeCtrlsBase> self(this);
    const Kt::Ptr<EffectValParamBase> before = std::exchange(shownParam_, param);
    for (std::size_t i = 0; self && i < editors_.size(); ++i)
        editors_[i].abandon(*editors_[i].glob);
    if (!self)
        return;
    setEnabled(static_cast<bool>(param));
    if (!param)
        return;
    if (before && paramName_ == rowNameOf(*before))
        setParamName(rowNameOf(*param));
    label_->paramChanged();
    setParamIsKeyframable(param->isKeyframable());
    handleParamReplaced(*param);
}

bool KeyframeCtrlsBase::userReset()
{
    const Kt::Ptr<EffectValParamBase> param = getEffectParam();
    return param && canInteract() && resetParam(*this, *param);
}

// Layout

int KeyframeCtrlsBase::calcLabelWidth(const EffectValParamBase& param)
{
    return UifStd::measure(rowNameOf(param)) + UifStd::getWidgetGap();
}

int KeyframeCtrlsBase::nameOffset()
{
    return UifStd::getControlHeight() + UifStd::getWidgetGap();
}

int KeyframeCtrlsBase::calcValEntryWidth() const
{
    return Button::calcSizeFor(L"100000%", font()).x;
}

void KeyframeCtrlsBase::setLabelWidth(int width)
{
    if (width == labelWidth_)
        return;
    labelWidth_ = width;
    relayout();
}

void KeyframeCtrlsBase::setFontSize(int size)
{
    StandardPanel::setFontSize(size);
    relayout();
}

void KeyframeCtrlsBase::putInto(Glob& editor, const Kt::Box<int>& cell)
{
    const int height = std::min(cell.height(), UifStd::getControlHeight());
    editor.setPosition({cell.left, cell.top + (cell.height() - height) / 2});
    editor.resize({std::max(cell.width(), 0), height});
    editor.setVisible(cell.width() > 0);
}

void KeyframeCtrlsBase::putSliderAndEntry(const Kt::Box<int>& area, Glob& slider, Glob& entry) const
{
    const int entryLeft = std::max(area.left, area.right - calcValEntryWidth());
    putInto(entry, {entryLeft, area.top, area.right, area.bottom});
    putInto(slider, {area.left, area.top, entryLeft - UifStd::getWidgetGap(), area.bottom});
}

int KeyframeCtrlsBase::calcNameWidth() const
{
    return button_->getWidth() + labelWidth_;
}

void KeyframeCtrlsBase::layoutChildren()
{
    const Kt::Box<int> area = getUserArea();
    const int gap = UifStd::getWidgetGap();
    button_->setPosition({area.left, area.top + (area.height() - button_->getHeight()) / 2});
    label_->setPosition({area.left + nameOffset(), area.top});
    label_->resize({labelWidth_, area.height()});
    const int left = label_->box().right + gap;
    layoutEditors({std::min(left, area.right), area.top, area.right, area.bottom});
}

} // namespace oribund
