#include "workbench/app/panel/SimplePanel.h"

#include "oribund/controls/binding/EffectParamObserverEx.h"
#include "oribund/controls/rows/KeyframeCtrlsBase.h"
#include "oribund/controls/rows/ParamRow.h"
#include "oribund/host/canvas/UifStd.h"
#include "oribund/host/effects/EffectInstance.h"
#include "oribund/host/services/TextTable.h"
#include "oribund/host/toolkit/widgets/Label.h"
#include "workbench/app/panel/PanelNotice.h"

#include <algorithm>
#include <utility>

namespace workbench
{

using namespace oribund;

SimplePanel::SimplePanel(const FXPanelCreationOptions& options)
    : EffectComponentPanel(options)
{
    // Not sooner: what is added resizes the panel.
    const auto width = static_cast<unsigned short>(std::clamp(getUserArea().width(), 1, 0xffff));
    notice_ = addWidget(std::make_unique<PanelNotice>(PanelNotice::InitArgs(width, 0, canvas())),
                        UserTopLeft(0, UifStd::getRowGap() / 2));
    rebuild();
    if (options.tabOrderManager)
        options.tabOrderManager->addTabStopsFrom(this);
}

SimplePanel::~SimplePanel() = default;

void SimplePanel::resize(double width, double height)
{
    const RedrawHold hold;
    const int widthBefore = getWidth();
    EffectComponentPanel::resize(width, height);
    if (getWidth() == widthBefore)
        return;
    const LayoutHold layoutHold(*this);
    notice_->resize({getUserArea().width(), notice_->getHeight()});
    for (Glob* widget : contents_)
        widget->resize({getUserArea().width(), widget->getHeight()});
    placeLabels();
}

void SimplePanel::handleFXModifications(const ChangeDescription& change)
{
    EffectComponentPanel::handleFXModifications(change);
    const bool mayShowOthers = ParamChangeFilter::isParamSetChange(change) || ParamChangeFilter::isWholesale(change) ||
                               change.code == EffectChangeCode::PresentationChanged;
    // A row follows its parameter when that is replaced, and keeps the keyboard.
    if (mayShowOthers && getEffectPtr() && whatToShow() != shown_)
        rebuild();
}

int SimplePanel::widestLabel() const
{
    int widest = 4 * UifStd::getRowHeight(); // so that most panels have the same columns
    for (const KeyframeCtrlsBase* row : rows_)
        if (const auto param = row->getEffectParam())
            widest = std::max(widest, KeyframeCtrlsBase::calcLabelWidth(*param));
    return widest;
}

void SimplePanel::setLabelWidth(int width)
{
    if (std::exchange(leastLabelWidth_, width) != width)
        placeLabels();
}

void SimplePanel::showNotice(const UIString& text, const UIString& button, std::function<void()> act)
{
    const UIString description(displayText(button) + L": " + displayText(getTitle()));
    notice_->show(text, button, description, std::move(act));
}

void SimplePanel::hideNotice()
{
    if (notice_->hasKeyboard())
        takeFocus();
    notice_->setVisible(false);
}

int SimplePanel::calcLabelWidth() const
{
    return std::min(std::max(widestLabel(), leastLabelWidth_), getUserArea().width() / 3);
}

void SimplePanel::placeLabels()
{
    const RedrawHold hold;
    const int width = calcLabelWidth();
    for (KeyframeCtrlsBase* row : rows_)
        row->setLabelWidth(width);
}

std::vector<SimplePanel::Shown> SimplePanel::whatToShow() const
{
    std::vector<Shown> entries;
    const Kt::Ptr<EffectInstance> effect = getEffectPtr();
    int hiddenGroups = 0;
    for (const ParamPresentationDetails& entry : effect->presentation()) {
        if (entry.kind == ParamPresentationDetails::Kind::GroupStart) {
            hiddenGroups += hiddenGroups > 0 || entry.isHidden() ? 1 : 0;
            if (hiddenGroups == 0)
                entries.push_back({entry.id, typeid(void), entry.title});
        } else if (entry.kind == ParamPresentationDetails::Kind::GroupEnd) {
            hiddenGroups -= hiddenGroups > 0 ? 1 : 0;
        } else if (const auto param = effect->findParam(entry.id); param && hiddenGroups == 0) {
            const EffectValParamBase& typed = *param;
            entries.push_back({entry.id, typeid(typed), {}});
        }
    }
    return entries;
}

void SimplePanel::rebuild()
{
    const Kt::Ptr<EffectInstance> effect = getEffectPtr();
    if (!effect)
        return;
    const RedrawHold hold;
    const LayoutHold layoutHold(*this);
    rows_.clear();
    for (; !contents_.empty(); contents_.pop_back())
        destroyWidget(*contents_.back());
    shown_ = whatToShow();
    for (const Shown& entry : shown_)
        add(entry, *effect);
    placeLabels();
}

void SimplePanel::add(const Shown& entry, const EffectInstance& effect)
{
    const auto width = static_cast<unsigned short>(std::clamp(getUserArea().width(), 0, 0xffff));
    if (entry.type != typeid(void)) {
        auto row = makeParamRow(getViewHandle(), *effect.findParam(entry.id), {width, 0, canvas()});
        rows_.push_back(row.get());
        addBelow(std::move(row));
        return;
    }
    Label::InitArgs heading(width, static_cast<unsigned short>(UifStd::getRowHeight()), canvas());
    heading.text = entry.title;
    heading.role = PaletteRole::HeadingText;
    addBelow(std::make_unique<Label>(heading));
}

void SimplePanel::addBelow(std::unique_ptr<Glob> widget)
{
    Glob* const above = contents_.empty() ? notice_ : contents_.back();
    contents_.push_back(addWidget(std::move(widget), WidgetPosition::below(*above, UifStd::getRowGap() / 2)));
}

} // namespace workbench
