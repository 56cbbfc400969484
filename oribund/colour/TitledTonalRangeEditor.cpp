#include "oribund/colour/TitledTonalRangeEditor.h"

#include "oribund/colour/ShadowMidtoneHighlightExtentsEditor.h"
#include "oribund/controls/rows/KeyframeButton.h"
#include "oribund/controls/rows/KeyframeButtonAdaptor.h"
#include "oribund/host/canvas/UifStd.h"
#include "oribund/host/effects/params/NumberDisplay.h"
#include "oribund/host/toolkit/core/Event.h"
#include "oribund/host/toolkit/widgets/Label.h"

#include <algorithm>

namespace oribund
{

namespace
{

GlobCreationInfo tonalInfo(int width, const Palette& palette, Canvas* canvas)
{
    GlobCreationInfo info(static_cast<unsigned short>(std::clamp(width, 0, 0xffff)),
                          static_cast<unsigned short>(TolerantRangeEditor::calcHeight()), canvas);
    info.palette = palette;
    return info;
}

Label::InitArgs titleArgs(const WString& title, const Palette& palette, Canvas* canvas)
{
    Label::InitArgs args(0, 0, canvas);
    args.palette = palette;
    args.text = UIString(title);
    return args;
}

} // namespace

/** The title, on which a double click resets the range. */
class TitledTonalRangeEditor::TitleLabel final : public Label
{
public:
    TitleLabel(const InitArgs& args, TitledTonalRangeEditor& row)
        : Label(args)
        , row_(row)
    {
    }

protected:
    bool handleMouseEvent(const Event& event) override
    {
        if (event.code != EventCode::MouseDoubleClick || event.button != MouseButton::Left)
            return Label::handleMouseEvent(event);
        row_.editor().userReset();
        return true;
    }

private:
    TitledTonalRangeEditor& row_;
};

TitledTonalRangeEditor::TitledTonalRangeEditor(const WString& title, int width, const Palette& palette, Canvas* canvas)
    : StandardPanel(tonalInfo(width, palette, canvas))
    , labelWidth_(UifStd::measure(title) + UifStd::getWidgetGap())
{
    beginLayoutHold();
    const auto add = [this]<class W>(std::unique_ptr<W> widget) {
        W* const added = widget.get();
        addChild(std::move(widget));
        return added;
    };
    button_ = add(std::make_unique<KeyframeButton>(canvas));
    button_->setPalette(palette);
    button_->setParamName(title);
    button_->setVisible(false);
    title_ = add(std::make_unique<TitleLabel>(titleArgs(title, palette, canvas), *this));
    editor_ =
        add(std::make_unique<ShadowMidtoneHighlightExtentsEditor>(static_cast<unsigned short>(0), palette, canvas));
    editor_->setAccessibleName(UIString(title));
    endLayoutHold();
    relayout();
}

TitledTonalRangeEditor::~TitledTonalRangeEditor() = default;

void TitledTonalRangeEditor::setDataAdaptor(const Kt::Ptr<ColourRangeAdaptor>& adaptor)
{
    editor_->setDataAdaptor(adaptor);
    const auto param = adaptor ? adaptor->getParam() : Kt::Ptr<EffectValParam<ColourData>>();
    editor_->setResetValue(param ? std::optional(param->getDefault()) : std::nullopt);
    if (param) {
        constexpr std::size_t kLast = 3;
        const NumberDisplay display = NumberDisplay::of(*param, kLast);
        editor_->setScale(param->getMax()[kLast]);
        editor_->setNumbers(display.format, display.step);
    }
    Kt::Ptr<ValAdaptorBase<String>> keyframes;
    if (param && param->isKeyframable())
        keyframes = Kt::makePtr<KeyframeButtonAdaptor<EffectValParamAccessor<ColourData>>>(
            adaptor->getViewHandle(), EffectValParamAccessor<ColourData>(*param));
    button_->setDataAdaptor(keyframes);
    button_->setVisible(static_cast<bool>(keyframes));
}

void TitledTonalRangeEditor::setLabelWidth(int width)
{
    if (width == labelWidth_)
        return;
    labelWidth_ = width;
    relayout();
}

void TitledTonalRangeEditor::layoutChildren()
{
    const Kt::Box<int> area = getUserArea();
    const int gap = UifStd::getWidgetGap();
    button_->setPosition({area.left, area.top + (area.height() - button_->getHeight()) / 2});
    title_->setPosition({area.left + button_->getWidth() + gap, area.top});
    title_->resize({labelWidth_, area.height()});
    const int left = std::min(title_->box().right + gap, area.right);
    // The gradient begins in line with other editors; a handle at its start reaches into the gap.
    const int half = RangeGeometry::nobbleSize() / 2;
    editor_->setPosition({left - half, area.top});
    editor_->resize({area.right - left + half, area.height()});
}

} // namespace oribund
