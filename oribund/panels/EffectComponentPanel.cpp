#include "oribund/panels/EffectComponentPanel.h"

#include "oribund/host/base/UIString.h"
#include "oribund/host/canvas/CanvasRenderer.h"
#include "oribund/host/canvas/ColourScheme.h"
#include "oribund/host/canvas/UifStd.h"
#include "oribund/host/edit/EditGesture.h"
#include "oribund/host/effects/EffectInstance.h"
#include "oribund/host/services/TextIds.h"
#include "oribund/host/services/TextTable.h"
#include "oribund/host/toolkit/widgets/Checkbox.h"
#include "oribund/host/toolkit/widgets/CheckboxEvent.h"

#include <memory>

namespace oribund
{

namespace
{
using Options = FXPanelCreationOptions;

/** A panel without a title bar has nothing with which to fold it. */
MinimizableGroup::InitArgs groupArgs(const Options& options)
{
    MinimizableGroup::InitArgs args = options;
    args.minimisable = args.minimisable && (options.flags & Options::kTitleBar);
    return args;
}
} // namespace

EffectComponentPanel::EffectComponentPanel(const FXPanelCreationOptions& options)
    : MinimizableGroup(groupArgs(options))
    , FXVobClient(options.viewHandle)
    , flags_(options.flags)
    , ledCallback_(this, &EffectComponentPanel::handleLEDClick)
{
    init(options);
}

EffectComponentPanel::~EffectComponentPanel() = default;

void EffectComponentPanel::init(const FXPanelCreationOptions& options)
{
    setSeparatorStyle(eNoSeparator);
    setTitleRowShown((flags_ & Options::kTitleBar) != 0);
    if (flags_ & Options::kTitleBar) {
        setMinSize({0, calcMinHeight()});
        setSizeChangeEnabled((flags_ & Options::kResizable) != 0);
        if (flags_ & Options::kGroupTitleColour)
            setTitleColour(UifStd::getColourScheme().headingText());
        if (flags_ & Options::kEnableLed)
            makeEnableLed();
        if (!(flags_ & Options::kMinimisable))
            setTitleCursor(MouseCursor::Text);
    }
    resize(options.width, options.height);
}

void EffectComponentPanel::makeEnableLed()
{
    Checkbox::InitArgs args;
    args.width = static_cast<unsigned short>(UifStd::getControlHeight());
    args.height = args.width;
    args.canvas = canvas();
    args.id = "enable_led";
    enableLed_ = addTitleWidget(std::make_unique<Checkbox>(args), 0);
    ledCallback_.attach(enableLed_->events());
    nameEnableLed();
    updateBypassButton(eRedrawFlag::No);
}

void EffectComponentPanel::nameEnableLed()
{
    const UIString name = UIString(TextIds::kSwitchEffect).withPlaceholder(L"EFFECT", displayText(getTitle()));
    enableLed_->setTooltip(name);
    enableLed_->setAccessibleName(name);
}

bool EffectComponentPanel::isEditable() const
{
    const EditPtr edit = getViewedEdit();
    return getEffectPtr() && edit && !edit->isReadOnly();
}

void EffectComponentPanel::setActive(bool active, eRedrawFlag redrawFlag)
{
    MinimizableGroup::setActive(active, redrawFlag);
    setTitleCursor(!active ? MouseCursor::Arrow : isMinimisable() ? MouseCursor::Hand : MouseCursor::Text);
    if (flags_ & Options::kGroupTitleColour) {
        setTitleActive(active, redrawFlag);
        setSizeChangeEnabled(active);
    }
}

void EffectComponentPanel::drawBorder(CanvasRenderer& renderer)
{
    if ((flags_ & Options::kDrawBorder) && getSizeState() != eSizeMinimised)
        renderer.frameRect(CanvasRenderer::toDouble(localBox()), getPalette().border());
}

void EffectComponentPanel::handleFXModifications(const CompoundEffectMonitorClient::ChangeDescription& change)
{
    const Kt::Ptr<EffectInstance> effect = getEffectPtr();
    if (!effect || (change.effect != effect->id() && !change.effect.isWildcard()))
        return;
    if (change.code == EffectChangeCode::EnabledChanged || change.code == EffectChangeCode::EditabilityChanged ||
        (change.flags & EffectChangeDescription::kWholesaleRefresh)) {
        updateTitle();
        updateBypassButton(eRedrawFlag::Yes);
    }
}

void EffectComponentPanel::updateTitle()
{
    const UIString title(getEffectPtr()->getName());
    if (title == getTitle())
        return;
    setTitle(title);
    if (enableLed_)
        nameEnableLed();
}

void EffectComponentPanel::updateBypassButton(eRedrawFlag redrawFlag)
{
    const Kt::Ptr<EffectInstance> effect = getEffectPtr();
    if (!enableLed_ || !effect)
        return;
    enableLed_->setChecked(effect->isEnabled(), redrawFlag);
    if (enableLed_->isEnabled() != isEditable())
        enableLed_->setEnabled(isEditable(), redrawFlag);
}

int EffectComponentPanel::handleLEDClick(const CheckboxEvent& event)
{
    const Kt::Ptr<EffectInstance> effect = getEffectPtr();
    if (event.kind != CheckboxEvent::Kind::Toggled || !isEditable())
        return 0;
    const EditPtr edit = getViewedEdit();
    const EditModifier modifier(edit, UIString(TextIds::kSwitchEffect).withPlaceholder(L"EFFECT", effect->getName()));
    effect->setEnabled(event.checked);
    EditModification modification;
    modification.type = EditModification::Type::EffectContent;
    modification.detail = static_cast<int>(EditModification::Type::EffectDetails);
    modification.object = effect->id();
    edit->addModification(modification);
    return 0;
}

} // namespace oribund
