#include "workbench/app/effects/GenericEffectPanel.h"

#include "oribund/controls/binding/EffectParamObserverEx.h"
#include "oribund/host/canvas/UifStd.h"
#include "oribund/host/services/TextIds.h"
#include "oribund/host/services/TextTable.h"
#include "oribund/host/toolkit/widgets/Label.h"
#include "oribund/panels/FXPanelFactory.h"
#include "oribund/panels/iEffectPanelBuilder.h"
#include "oribund/panels/iVideoOverlayRenderer.h"
#include "workbench/app/effects/PanelFilter.h"
#include "workbench/app/effects/PanelNotice.h"

#include <algorithm>
#include <utility>

namespace workbench
{

using namespace oribund;

namespace
{

/** So many are found at a glance. */
constexpr int kFewParams = 12;

class GenericPanelBuilder final : public iEffectPanelBuilder
{
public:
    bool canBuild(int kind, const String&) override { return kind == kComponentPanel; }

    EffectComponentPanel* buildComponentPanel(const FXPanelCreationOptions& options) override
    {
        return new GenericEffectPanel(options);
    }

    Kt::Ptr<iVideoOverlayRenderer> buildOverlayRenderer(Vob*, const Kt::Ptr<EffectInstance>&) override { return {}; }
};

} // namespace

GenericEffectPanel::GenericEffectPanel(const FXPanelCreationOptions& options)
    : EffectComponentPanel(options)
    , FXPanelGenerator(options.viewHandle, this, options.tabOrderManager)
{
    const RedrawHold redraws;
    const LayoutHold hold(*this);
    const auto width = static_cast<unsigned short>(std::clamp(getUserArea().width(), 1, 0xffff));
    const WidgetSurround follows = getGroupSeparator();
    notice_ = addWidget(std::make_unique<PanelNotice>(PanelNotice::InitArgs(width, 0, canvas())),
                        UserTopLeft(0, UifStd::getRowGap() / 2), follows);
    filter_ =
        addWidget(std::make_unique<PanelFilter>(PanelFilter::InitArgs(width, 0, canvas()), [this] { filterParams(); }),
                  WidgetPosition::below(*notice_, UifStd::getRowGap() / 2), follows);
    body_ = addWidget(std::make_unique<WidgetGroup>(WidgetGroup::InitArgs(width, 0, canvas())),
                      WidgetPosition::below(*filter_, UifStd::getRowGap() / 2), follows);
    Label::InitArgs args(width, 0, canvas());
    args.text = UIString(TextIds::kNoParams);
    args.role = PaletteRole::DisabledText;
    nothing_ = addWidget(std::make_unique<Label>(args), WidgetPosition::below(*body_), follows);
    nothing_->setVisible(false);
    showParams();
    showMask();
}

GenericEffectPanel::~GenericEffectPanel() = default;

void GenericEffectPanel::resize(double width, double height)
{
    const RedrawHold hold;
    const int widthBefore = getWidth();
    EffectComponentPanel::resize(width, height);
    if (getWidth() != widthBefore && body_)
        placeLabels();
}

void GenericEffectPanel::handleFXModifications(const ChangeDescription& change)
{
    EffectComponentPanel::handleFXModifications(change);
    const bool isOwn = change.effect == getViewHandle().getViewEffectID() || change.effect.isWildcard();
    const bool mayShowOthers = ParamChangeFilter::isParamSetChange(change) || ParamChangeFilter::isWholesale(change) ||
                               change.code == EffectChangeCode::PresentationChanged;
    if (isOwn && mayShowOthers)
        showParams();
}

void GenericEffectPanel::showParams()
{
    if (!getEffectPtr())
        return;
    const RedrawHold redraws;
    const LayoutHold hold(*this);
    generateUI(getViewHandle().getViewEffectID(), body_);
    nothing_->setVisible(getPlan().paramCount() == 0);
    body_->setVisible(getPlan().paramCount() > 0);
    filter_->setVisible(getPlan().paramCount() > kFewParams || filter_->isActive());
    filterParams();
    placeLabels();
}

void GenericEffectPanel::filterParams()
{
    if (filter_->isActive())
        showOnly([this](const EffectValParamBase& param) { return filter_->wants(param); });
    else if (isFiltered_)
        showOnly({});
    isFiltered_ = filter_->isActive();
}

void GenericEffectPanel::placeLabels()
{
    // Half of a narrow panel is for what changes the values.
    const int most = body_->getUserArea().width() * 2 / 5;
    const int wanted = std::max(widestLabel(), leastLabelWidth_);
    setLabelWidth(static_cast<unsigned short>(std::clamp(wanted, 0, std::max(most, 0))));
}

void GenericEffectPanel::setLeastLabelWidth(int width)
{
    if (std::exchange(leastLabelWidth_, width) != width)
        placeLabels();
}

void GenericEffectPanel::showNotice(const UIString& text, const UIString& button, std::function<void()> act)
{
    const UIString description(displayText(button) + L": " + displayText(getTitle()));
    notice_->show(text, button, description, std::move(act));
}

void GenericEffectPanel::hideNotice()
{
    if (notice_->hasKeyboard())
        takeFocus();
    notice_->setVisible(false);
}

const EffectInstance::ParamPresentationDetails* GenericEffectPanel::findParamDescription(const Glob* widget) const
{
    const Kt::Ptr<EffectInstance> effect = getEffectPtr();
    if (!effect)
        return nullptr;
    const auto& entries = effect->presentation();
    const auto found = std::find_if(entries.begin(), entries.end(), [&](const auto& entry) {
        const Glob* const control = findWidgetForParam(effect->findParam(entry.id).get());
        return control && control->isAncestorOf(widget);
    });
    return found == entries.end() ? nullptr : &*found;
}

void registerGenericPanels()
{
    FXPanelFactory::instance().add(Kt::Ptr<iEffectPanelBuilder>(Kt::makePtr<GenericPanelBuilder>()));
}

} // namespace workbench
