#include "workbench/app/panel/SimplePanel.h"

#include "oribund/controls/EffectParamObserverEx.h"
#include "oribund/host/canvas/UifStd.h"
#include "oribund/host/effects/EffectInstance.h"
#include "oribund/host/toolkit/Label.h"
#include "workbench/app/panel/ParamRow.h"

#include <algorithm>
#include <utility>

namespace workbench
{

using namespace oribund;

SimplePanel::SimplePanel(const FXPanelCreationOptions& options)
    : EffectComponentPanel(options)
{
    rebuild();
    if (options.tabOrderManager)
        options.tabOrderManager->addTabStopsFrom(this);
}

SimplePanel::~SimplePanel() = default;

void SimplePanel::resize(double width, double height)
{
    EffectComponentPanel::resize(width, height);
    // The rows share out the width when they are made.
    if (!building_ && !contents_.empty() && getWidth() != builtWidth_)
        rebuild();
}

void SimplePanel::handleFXModifications(const ChangeDescription& change)
{
    EffectComponentPanel::handleFXModifications(change);
    const Kt::Ptr<EffectInstance> effect = getEffectPtr();
    if (effect && ParamChangeFilter::isParamSetChange(change) && change.effect == effect->id())
        rebuild();
}

int SimplePanel::calcNameWidth(const EffectInstance& effect) const
{
    int widest = 4 * UifStd::getRowHeight();
    for (const auto& param : effect.params())
        widest = std::max(widest, ParamRow::calcNameWidth(*param));
    return std::min(widest, getUserArea().width() * 2 / 5);
}

void SimplePanel::addBelow(std::unique_ptr<Glob> widget)
{
    Glob* const above = contents_.empty() ? nullptr : contents_.back();
    const WidgetPosition place =
        above ? WidgetPosition::below(*above, UifStd::getRowGap() / 2) : UserTopLeft(0, UifStd::getRowGap() / 2);
    contents_.push_back(addWidget(std::move(widget), place));
}

void SimplePanel::rebuild()
{
    const Kt::Ptr<EffectInstance> effect = getEffectPtr();
    if (!effect)
        return;
    building_ = true;
    const RedrawHold hold;
    for (Glob* widget : std::exchange(contents_, {}))
        destroyWidget(*widget);

    builtWidth_ = getWidth();
    const auto width = static_cast<unsigned short>(std::max(0, getUserArea().width()));
    const auto rowHeight = static_cast<unsigned short>(UifStd::getRowHeight());
    const int nameWidth = calcNameWidth(*effect);
    int hiddenGroups = 0;
    for (const ParamPresentationDetails& entry : effect->presentation()) {
        if (entry.kind == ParamPresentationDetails::Kind::GroupStart) {
            hiddenGroups += hiddenGroups > 0 || entry.isHidden() ? 1 : 0;
            Label::InitArgs heading(width, rowHeight);
            heading.text = entry.title;
            heading.role = PaletteRole::HeadingText;
            if (hiddenGroups == 0)
                addBelow(std::make_unique<Label>(heading));
        } else if (entry.kind == ParamPresentationDetails::Kind::GroupEnd) {
            hiddenGroups -= hiddenGroups > 0 ? 1 : 0;
        } else if (const auto param = effect->findParam(entry.id); param && hiddenGroups == 0) {
            ParamRow::InitArgs args(width, rowHeight);
            args.nameWidth = nameWidth;
            addBelow(std::make_unique<ParamRow>(args, getViewHandle(), *param));
        }
    }
    building_ = false;
}

} // namespace workbench
