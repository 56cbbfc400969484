#include "oribund/colour/ColourRangePanel.h"

#include "oribund/colour/ColourGrabberButton.h"
#include "oribund/colour/ColourRangeRow.h"
#include "oribund/colour/TolerantRangeEditor.h"
#include "oribund/controls/binding/EffectValParamAccessor.h"
#include "oribund/host/base/Numeric.h"
#include "oribund/host/canvas/CanvasRenderer.h"
#include "oribund/host/canvas/UifStd.h"
#include "oribund/host/edit/EditGesture.h"
#include "oribund/host/edit/Vob.h"
#include "oribund/host/services/TextIds.h"
#include "oribund/host/services/TextTable.h"
#include "oribund/host/toolkit/widgets/Label.h"

#include <algorithm>
#include <cstring>

namespace oribund
{

namespace
{

using RangeParam = EffectValParam<ColourData>;

GlobCreationInfo panelInfo(unsigned short width, const Palette& palette, Canvas* canvas)
{
    GlobCreationInfo info(width, static_cast<unsigned short>(ColourRangePanel::calcHeight()), canvas);
    info.palette = palette;
    return info;
}

int heightOf(std::size_t rows)
{
    const int count = static_cast<int>(rows);
    return count * TolerantRangeEditor::calcHeight() + std::max(0, count - 1) * UifStd::getWidgetGap();
}

} // namespace

int ColourRangePanel::calcHeight()
{
    return heightOf(kRows);
}

std::vector<Kt::Ptr<EffectValParamBase>> ColourRangePanel::paramsOf(const Kt::Ptr<EffectInstance>& effect,
                                                                    unsigned paramIndex)
{
    std::vector<Kt::Ptr<EffectValParamBase>> params;
    for (unsigned i = 0; effect && i < kRows && paramIndex < effect->params().size(); ++i) {
        const auto param = effect->paramAt(static_cast<int>(paramIndex + i));
        if (!Kt::dynamicCast<RangeParam>(param) || !(param->displayFlags() & ParamDisplay::kColourRange))
            break;
        params.push_back(param);
    }
    return params;
}

ColourRangePanel::ColourRangePanel(const FXViewHandle& handle, unsigned paramIndex, unsigned short width,
                                   const Palette& palette, Canvas* canvas)
    : StandardPanel(panelInfo(width, palette, canvas))
    , handle_(handle)
    , paramIndex_(paramIndex)
{
    beginLayoutHold();
    setAccessibleName(UIString(TextIds::kColourRange));
    const auto params = paramsOf(handle.getEffectPtr(), paramIndex);
    int labelWidth = 3 * UifStd::getRowHeight();
    for (const auto& param : params)
        labelWidth = std::max(labelWidth, KeyframeCtrlsBase::calcLabelWidth(*param));
    for (std::size_t i = 0; i < params.size(); ++i) {
        auto row = std::make_unique<ColourRangeRow>(*this, i, handle, static_cast<const RangeParam&>(*params[i]), width,
                                                    static_cast<unsigned short>(labelWidth), canvas);
        row->setPalette(palette);
        rows_[i] = row.get();
        addChild(std::move(row));
    }
    auto grabber = std::make_unique<ColourGrabberButton>(handle, palette, canvas);
    grabber_ = grabber.get();
    addChild(std::move(grabber));
    Label::InitArgs args(0, 0, canvas);
    args.palette = palette;
    args.text = UIString(TextIds::kColourRange);
    auto label = std::make_unique<Label>(args);
    label_ = label.get();
    addChild(std::move(label));
    applySize(getWidth(), heightOf(params.size()));
    endLayoutHold();
    relayout();
    Vob* const vob = handle.getVob();
    if (iFrameStatistics* const statistics = vob ? vob->frameStatistics() : nullptr)
        statisticsCallback_.attach(statistics->changes());
}

ColourRangePanel::~ColourRangePanel() = default;

TolerantRangeEditor* ColourRangePanel::editorOf(std::size_t row) const
{
    return row < kRows && rows_[row] ? &rows_[row]->editor() : nullptr;
}

void ColourRangePanel::setLabelWidth(int width)
{
    for (ColourRangeRow* row : rows_)
        if (row)
            row->setLabelWidth(width);
}

void ColourRangePanel::resize(double width, double height)
{
    StandardPanel::resize(width, height);
}

void ColourRangePanel::setActive(bool active, eRedrawFlag redrawFlag)
{
    StandardPanel::setActive(active, redrawFlag);
}

void ColourRangePanel::layoutChildren()
{
    const Kt::Box<int> area = getUserArea();
    const int gap = UifStd::getWidgetGap();
    // The title stands above the eye-dropper where the strips stay long all the same.
    const int titleWidth = UifStd::measure(label_->getText(), label_->font());
    const bool hasTitle = area.width() - titleWidth > 20 * UifStd::getRowHeight();
    const bool hasColumn = hasTitle || grabber_->isVisible();
    const int column = hasTitle ? std::max(titleWidth, grabber_->getWidth()) : grabber_->getWidth();
    const int right = hasColumn ? std::max(area.left, area.right - column - gap) : area.right;
    int y = area.top;
    for (ColourRangeRow* row : rows_) {
        if (!row)
            continue;
        row->setPosition({area.left, y});
        row->resize({right - area.left, TolerantRangeEditor::calcHeight()});
        y += TolerantRangeEditor::calcHeight() + gap;
    }
    label_->setVisible(hasTitle);
    label_->setPosition({right + gap, area.top + (TolerantRangeEditor::calcHeight() - label_->getHeight()) / 2});
    const int below = hasTitle ? TolerantRangeEditor::calcHeight() + gap : 0;
    grabber_->setPosition(
        {right + gap, area.top + below + (TolerantRangeEditor::calcHeight() - grabber_->getHeight()) / 2});
}

// Ranges

ColEyeDropBase::ColourRange ColourRangePanel::shownRange() const
{
    ColEyeDropBase::ColourRange range = ColEyeDropBase::rangeOf({});
    const std::array<ColourData*, kRows> axes{&range.hue, &range.saturation, &range.luminance};
    for (std::size_t i = 0; i < kRows; ++i)
        if (const TolerantRangeEditor* const editor = editorOf(i))
            *axes[i] = editor->getRanges();
    return range;
}

void ColourRangePanel::setCol(const Colour& colour, bool store)
{
    const ColEyeDropBase::ColourRange range = ColEyeDropBase::rangeOf({&colour, 1});
    if (store) {
        setColourRange(range, handle_, paramIndex_);
        return;
    }
    const std::array<ColourData, kRows> axes{range.hue, range.saturation, range.luminance};
    for (std::size_t i = 0; i < kRows; ++i)
        if (TolerantRangeEditor* const editor = editorOf(i))
            editor->setRangeDefinition(axes[i]);
}

bool ColourRangePanel::setColourRange(const ColEyeDropBase::ColourRange& range, const FXViewHandle& handle,
                                      unsigned paramIndex)
{
    const FXVobClient view(handle);
    const Kt::Ptr<EffectInstance> effect = view.getEffectPtr();
    const auto params = paramsOf(effect, paramIndex);
    const bool editable = std::all_of(params.begin(), params.end(),
                                      [&](const auto& param) { return view.canEditParam(*effect, *param); });
    if (params.empty() || !editable)
        return false;
    const bool isAnimated = std::any_of(params.begin(), params.end(), [](const auto& param) {
        return param->functionType() == EffectValParamFnType::Keyframed;
    });
    if (isAnimated)
        view.prepareEdit();
    const RedrawHold hold;
    const double time = clampNormalisedTime(view.getNormalisedCurrentTime());
    const std::array<ColourData, kRows> axes{range.hue, range.saturation, range.luminance};
    EditGesture gesture;
    gesture.begin(view.getViewedEdit(), UIString(TextIds::kPickStep));
    bool done = true;
    for (std::size_t i = 0; i < params.size(); ++i) {
        EffectValParamAccessor<ColourData> accessor(static_cast<const RangeParam&>(*params[i]));
        done = accessor.setValue(effect, axes[i], time, ChangeKind::Single) && done;
    }
    return done;
}

bool ColourRangePanel::handleMessageEvent(const String& message, Glob* sender)
{
    constexpr std::size_t kLength = sizeof(ColourGrabberButton::kMessage) - 1;
    if (std::strncmp(message.c_str(), ColourGrabberButton::kMessage, kLength) == 0)
        setColourRange(ColEyeDropBase::combined(shownRange(), grabber_->getRange(), grabber_->getMode()), handle_,
                       paramIndex_);
    (void)sender;
    return false;
}

// Strips

double ColourRangePanel::hueMiddle() const
{
    const ColourData hue = shownRange().hue;
    return (hue[0] + hue[3]) / 2.0;
}

int ColourRangePanel::handleStatistics(const iFrameStatistics&)
{
    for (ColourRangeRow* row : rows_)
        if (row)
            row->editor().redraw();
    return 0;
}

void ColourRangePanel::drawStrip(CanvasRenderer& renderer, const Kt::Box<double>& strip, ColourAxis axis)
{
    Vob* const vob = handle_.getVob();
    iFrameStatistics* const statistics = vob ? vob->frameStatistics() : nullptr;
    const auto* const counted = statistics ? statistics->histogram(handle_.getViewEffectID(), axis) : nullptr;
    painters_[static_cast<std::size_t>(axis)].draw(renderer, strip, hueMiddle(), counted);
}

void ColourRangePanel::drawHueSlider(TolerantRangeEditor&, CanvasRenderer& renderer, const Kt::Box<double>& strip,
                                     ColourRangePanel& panel)
{
    panel.drawStrip(renderer, strip, ColourAxis::Hue);
}

void ColourRangePanel::drawSatSlider(TolerantRangeEditor&, CanvasRenderer& renderer, const Kt::Box<double>& strip,
                                     ColourRangePanel& panel)
{
    panel.drawStrip(renderer, strip, ColourAxis::Saturation);
}

void ColourRangePanel::drawLumSlider(TolerantRangeEditor&, CanvasRenderer& renderer, const Kt::Box<double>& strip,
                                     ColourRangePanel& panel)
{
    panel.drawStrip(renderer, strip, ColourAxis::Luminance);
}

} // namespace oribund
