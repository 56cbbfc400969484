#include "oribund/panels/EffectComponentPanel.h"

#include "oribund/host/base/UIString.h"
#include "oribund/host/canvas/CanvasRenderer.h"
#include "oribund/host/canvas/UifStd.h"
#include "oribund/host/edit/EditGesture.h"
#include "oribund/host/edit/FXEditor.h"
#include "oribund/host/edit/Vob.h"
#include "oribund/host/edit/monitor/CompoundEffectMonitor.h"
#include "oribund/host/effects/EffectInstance.h"
#include "oribund/host/services/TextIds.h"
#include "oribund/host/services/TextTable.h"
#include "oribund/host/toolkit/core/Event.h"
#include "oribund/host/toolkit/core/Menu.h"
#include "oribund/host/toolkit/menus/SettingsButton.h"
#include "oribund/host/toolkit/widgets/Checkbox.h"
#include "oribund/panels/EffectMenu.h"
#include "oribund/panels/FXPanelFactory.h"
#include "oribund/panels/FXPanelGenerator.h"
#include "oribund/panels/RemoveComponent.h"

#include <algorithm>
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

bool isTitledByName(const Options& options)
{
    const Kt::Ptr<EffectInstance> effect = options.viewHandle.getEffectPtr();
    return effect && options.title == UIString(effect->getName());
}
} // namespace

EffectComponentPanel::EffectComponentPanel(const FXPanelCreationOptions& options)
    : MinimizableGroup(groupArgs(options))
    , FXVobClient(options.viewHandle)
    , flags_(options.flags)
    , titleIsName_(isTitledByName(options))
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
        setTitlePalette(makeTitlePalette());
        titleBar_.make(*this, flags_);
        if (titleBar_.led())
            ledCallback_.attach(titleBar_.led()->events());
        if (!(flags_ & Options::kMinimisable))
            setTitleCursor(MouseCursor::Text);
    }
    updateAll(eRedrawFlag::No);
    resize(options.width, options.height);
}

bool EffectComponentPanel::isMaskable(const Kt::Ptr<EffectInstance>& effect)
{
    Vob* const vob = Vob::getPlayMachine();
    const FXEditor* const editor = vob ? vob->fxEditor() : nullptr;
    UIString reason;
    return effect && editor && editor->isMaskable(*effect, reason);
}

bool EffectComponentPanel::isEditable() const
{
    return getEffectPtr() && getVob() && !getVob()->isReadOnly();
}

void EffectComponentPanel::visitChildren(const std::function<void(Glob*)>& visit)
{
    forEachChild([&visit](Glob& child) { visit(&child); });
}

// The title

bool EffectComponentPanel::canRename() const
{
    if (!titleIsName_ || !isEditable())
        return false;
    const FXEditor* const editor = getVob()->fxEditor();
    return editor && editor->offers(FXEditor::Command::Rename, *getEffectPtr()) == FXEditor::Offer::Yes;
}

Palette EffectComponentPanel::makeTitlePalette() const
{
    Palette palette = getPalette();
    if (flags_ & Options::kGroupTitleColour)
        palette.setColour(PaletteRole::HeadingText, FXPanelGenerator::getGroupTitleColour());
    return palette;
}

void EffectComponentPanel::setActive(bool active, eRedrawFlag redrawFlag)
{
    const RedrawHold hold;
    const GlobRef<EffectComponentPanel> self(this);
    MinimizableGroup::setActive(active, redrawFlag); // LED and settings button too
    if (!self)
        return;
    setTitleEditable(active && canRename());
    setTitleCursor(!active ? MouseCursor::Arrow : isMinimisable() ? MouseCursor::Hand : MouseCursor::Text);
    if (flags_ & Options::kGroupTitleColour) {
        setTitleActive(active, redrawFlag);
        setSizeChangeEnabled(active);
    }
}

bool EffectComponentPanel::widgetVisibilityCanChange(const Glob* widget) const
{
    return widget != titleBar_.led() && widget != titleBar_.settingsButton() &&
           MinimizableGroup::widgetVisibilityCanChange(widget);
}

void EffectComponentPanel::handleTitleChange()
{
    rename(displayText(getTitle()));
}

bool EffectComponentPanel::handleTitleCleared()
{
    rename({});
    return true;
}

void EffectComponentPanel::rename(const WString& name)
{
    const GlobRef<EffectComponentPanel> self(this);
    if (canRename())
        getVob()->fxEditor()->rename(*getEffectPtr(), name);
    if (self)
        updateTitle(eRedrawFlag::Yes); // the host may have refused the name, or taken a part of it
}

// What the effect is like

void EffectComponentPanel::handleFXModifications(const CompoundEffectMonitorClient::ChangeDescription& change)
{
    const Kt::Ptr<EffectInstance> effect = getEffectPtr();
    if (!effect || (change.effect != effect->id() && !change.effect.isWildcard()))
        return;
    switch (change.code) {
    case EffectChangeCode::EnabledChanged:
    case EffectChangeCode::EditabilityChanged:
    case EffectChangeCode::PresentationChanged:
    case EffectChangeCode::ParamSetChanged:
    case EffectChangeCode::ParamSetRestored:
        break;
    default:
        if (!(change.flags & EffectChangeDescription::kWholesaleRefresh))
            return;
    }
    updateAll(eRedrawFlag::Yes);
    if (showsMask_)
        showMask();
}

void EffectComponentPanel::updateAll(eRedrawFlag redrawFlag)
{
    updateTitle(redrawFlag);
    updateBypassButton(redrawFlag);
    updateSettingsButton(redrawFlag);
    setTitleEditable(isActive() && canRename());
}

void EffectComponentPanel::updateTitle(eRedrawFlag redrawFlag)
{
    const Kt::Ptr<EffectInstance> effect = getEffectPtr();
    if (!effect)
        return;
    if (titleIsName_)
        setTitle(UIString(effect->getName()));
    titleBar_.nameAfter(displayText(getTitle()));
    updateTitleContext();
    if (redrawFlag == eRedrawFlag::Yes)
        redraw(getTitleArea());
}

void EffectComponentPanel::updateTitleContext()
{
    const WString title = displayText(getTitle());
    const WString track = trackName();
    setTitleContext(
        track.empty()
            ? UIString(title)
            : UIString(TextIds::kEffectOnTrack).withPlaceholder(L"EFFECT", title).withPlaceholder(L"TRACK", track));
}

WString EffectComponentPanel::trackName() const
{
    const Kt::Ptr<EffectInstance> effect = getEffectPtr();
    CompoundEffectMonitor* const monitor = getVob() ? getVob()->getEffectMonitor() : nullptr;
    return effect && monitor ? monitor->getTrackName(monitor->getTrackOf(effect->id())) : WString();
}

void EffectComponentPanel::updateBypassButton(eRedrawFlag redrawFlag)
{
    if (const Kt::Ptr<EffectInstance> effect = getEffectPtr())
        titleBar_.updateBypassButton(*effect, isEditable(), redrawFlag);
}

void EffectComponentPanel::updateSettingsButton(eRedrawFlag redrawFlag)
{
    if (const Kt::Ptr<EffectInstance> effect = getEffectPtr())
        titleBar_.updateSettingsButton(*effect, redrawFlag);
}

void EffectComponentPanel::drawBorder(CanvasRenderer& renderer)
{
    if ((flags_ & Options::kDrawBorder) && getSizeState() != eSizeMinimised)
        renderer.frameRect(CanvasRenderer::toDouble(localBox()), getPalette().border());
}

// The mask

void EffectComponentPanel::createMaskPanel(const WidgetPosition& position, const WidgetSurround& surround)
{
    const Kt::Ptr<EffectInstance> effect = getEffectPtr();
    const Kt::Ptr<EffectInstance> mask = effect ? effect->getMask() : Kt::Ptr<EffectInstance>();
    if (!mask)
        return;
    const auto width = static_cast<unsigned short>(std::clamp(getUserArea().width(), 0, 0xffff));
    Options options(getVob(), mask, width, canvas());
    options.setViewEffectID(mask->id());
    options.flags = Options::kMaskPanelFlags;
    options.title = UIString(TextIds::kMaskTitle);
    options.minimisable = false;
    // So that the frame stays clear of the title and of the rows.
    options.GlobCreationInfo::border.left = options.GlobCreationInfo::border.right = UifStd::getRowGap();
    std::unique_ptr<EffectComponentPanel> panel(FXPanelFactory::instance().makeComponentPanel(options));
    if (!panel)
        return;
    maskPanel_ = GlobRef<EffectComponentPanel>(panel.get());
    addWidget(std::move(panel), position, surround);
}

void EffectComponentPanel::showMask()
{
    showsMask_ = true;
    const Kt::Ptr<EffectInstance> effect = getEffectPtr();
    const Kt::Ptr<EffectInstance> mask = effect ? effect->getMask() : Kt::Ptr<EffectInstance>();
    const RedrawHold hold;
    const LayoutHold layoutHold(*this);
    if (maskPanel_ && (!mask || maskPanel_->getEffectPtr() != mask || maskPanel_.get() != previousWidget()))
        destroyWidget(*maskPanel_);
    if (maskPanel_ || !mask)
        return;
    WidgetSurround surround;
    surround.followWidth = true;
    const Glob* const above = previousWidget();
    createMaskPanel(above ? WidgetPosition::below(*above, UifStd::getRowGap()) : UserTopLeft(0, 0), surround);
}

// What the user does

std::vector<Kt::Ptr<EffectInstance>> EffectComponentPanel::effectsMeant(const CheckboxEvent& event) const
{
    const Kt::Ptr<EffectInstance> effect = getEffectPtr();
    if (event.kind == CheckboxEvent::Kind::Toggled)
        return {effect};
    CompoundEffectMonitor* const monitor = getVob()->getEffectMonitor();
    if (event.kind != CheckboxEvent::Kind::ModifiedClick || event.modifiers != Event::kCtrl || !monitor)
        return {};
    std::vector<Kt::Ptr<EffectInstance>> effects = monitor->getEffects(monitor->getTrackOf(effect->id()));
    std::erase(effects, nullptr);
    return effects;
}

int EffectComponentPanel::handleLEDClick(const CheckboxEvent& event)
{
    if (!isEditable())
        return 0;
    const bool enabled = event.checked;
    const Kt::Ptr<EffectInstance> effect = getEffectPtr();
    const std::vector<Kt::Ptr<EffectInstance>> effects = effectsMeant(event);
    if (effects.empty())
        return 0;
    const EditPtr edit = getViewedEdit();
    const UIString step = effects.size() == 1
                              ? UIString(TextIds::kSwitchEffect).withPlaceholder(L"EFFECT", effects[0]->getName())
                              : UIString(TextIds::kSwitchAllEffects).withPlaceholder(L"TRACK", trackName());
    const EditModifier modifier(edit, step);
    for (const auto& each : effects)
        each->setEnabled(enabled);
    EditModification modification;
    modification.type = EditModification::Type::EffectContent;
    modification.detail = static_cast<int>(EditModification::Type::EffectDetails);
    modification.object = effects.size() == 1 ? effect->id() : IdStamp();
    edit->addModification(modification);
    return 0;
}

bool EffectComponentPanel::hasMenu() const
{
    const unsigned needed = Options::kTitleBar | Options::kSettingsButton;
    const Kt::Ptr<EffectInstance> effect = getEffectPtr();
    return (flags_ & needed) == needed && getVob() && effect && effect->hasComponentControls();
}

void EffectComponentPanel::reviewMenu(const Event*)
{
    if (!hasMenu())
        return;
    EffectMenuItems::getItemsForComponent(editMenu(), *getVob(), getEffectPtr());
    editMenu().setTitle(getTitle());
}

bool EffectComponentPanel::handleMessageEvent(const String& message, Glob* sender)
{
    Vob* const vob = getVob();
    if (message == EffectMenuItems::kRename)
        return beginTitleEdit();
    if (message == EffectMenuItems::kRemove)
        return vob && removeComponent(*vob, getEffectPtr());
    return (vob && EffectMenuItems::perform(message, *vob, getEffectPtr())) ||
           MinimizableGroup::handleMessageEvent(message, sender);
}

bool EffectComponentPanel::handleMouseEvent(const Event& event)
{
    if (event.isPress(MouseButton::Left) && getTitleArea().contains(event.position))
        titleDrag_.press(event);
    if (titleDrag_.begins(event))
        MinimizableGroup::handleMouseEvent(Event::plain(EventCode::MouseCancel)); // it is no click to fold the panel
    return titleDrag_.react(event) || MinimizableGroup::handleMouseEvent(event);
}

bool EffectComponentPanel::usesKey(const Event& press) const
{
    return (titleDrag_.isDragging() && press.isKeyPress(Key::Escape)) || MinimizableGroup::usesKey(press);
}

bool EffectComponentPanel::handleKeyEvent(const Event& event)
{
    if (titleDrag_.isDragging() && event.isKeyPress(Key::Escape)) {
        titleDrag_.cancel();
        return true;
    }
    if (!event.isKeyPress(Key::Menu))
        return MinimizableGroup::handleKeyEvent(event);
    openMenu({0, getTitleArea().bottom}, &event); // not below the rows, which may be out of view
    return true;
}

} // namespace oribund
