#pragma once

#include "oribund/host/base/Export.h"
#include "oribund/host/edit/monitor/FXVobClient.h"
#include "oribund/host/toolkit/layout/MinimizableGroup.h"
#include "oribund/panels/EffectTitleBar.h"
#include "oribund/panels/FXPanelCreationOptions.h"
#include "oribund/panels/TitleDrag.h"

#include <functional>

namespace oribund
{

struct CheckboxEvent;

/**
 * The frame around the controls of one effect: a group whose title bar shows the effect's name and, as the creation
 * flags ask, the LED that switches the effect on and off, and the button of the menu of what can be done with the
 * effect. Panel builders return it or a class derived from it, which fills the body. It follows the effect when that is
 * renamed, masked or switched elsewhere. Any of its commands may destroy it. User-interface thread only.
 */
class ORIBUND_API EffectComponentPanel : public MinimizableGroup, public FXVobClient
{
public:
    explicit EffectComponentPanel(const FXPanelCreationOptions& options);
    ~EffectComponentPanel() override;

    /** The flags with which it was created, FXPanelCreationOptions::Flag. */
    unsigned int getFlags() const { return flags_; }

    /** Whether effects of this kind can have a mask, as the viewer with focus knows. */
    static bool isMaskable(const Kt::Ptr<EffectInstance>& effect);

    /** The user drags the panel by its title, where somebody listens to this. */
    Notifier<TitleDragEvent>& titleDrags() { return titleDrag_.events(); }

    /** The panel of the effect's mask; null without one. */
    Glob* getMaskPanel() const { return maskPanel_.get(); }

    /** The presentation entry of the parameter that a widget in the body belongs to; null for none. For the derived
        class, which knows what it has put there. */
    virtual const EffectInstance::ParamPresentationDetails* findParamDescription(const Glob*) const { return nullptr; }

    void setActive(bool active, eRedrawFlag redrawFlag = eRedrawFlag::Yes) override;
    bool widgetVisibilityCanChange(const Glob* widget) const override;
    bool usesKey(const Event& press) const override;

protected:
    /** Whether the user may change the effect: it is there, and its edit is not read-only. */
    bool isEditable() const;

    /** Calls the function for each widget of the panel. */
    void visitChildren(const std::function<void(Glob*)>& visit);

    /** Makes the panel of the effect's mask; nothing where it has none, or where the factory makes none. */
    void createMaskPanel(const WidgetPosition& position, const WidgetSurround& surround);

    /**
     * For the derived class, when it has filled the body: from now on the mask's panel stands below all other widgets
     * as long as the effect has a mask. To be called again after widgets were added.
     */
    void showMask();

    void drawBorder(CanvasRenderer& renderer) override;
    void handleFXModifications(const CompoundEffectMonitorClient::ChangeDescription& change) override;
    void handleTitleChange() override;
    bool handleTitleCleared() override;
    bool hasMenu() const override;
    void reviewMenu(const Event* event) override;
    bool handleMessageEvent(const String& message, Glob* sender) override;
    bool handleMouseEvent(const Event& event) override;
    bool handleKeyEvent(const Event& event) override;

private:
    void init(const FXPanelCreationOptions& options);
    int handleLEDClick(const CheckboxEvent& event);
    std::vector<Kt::Ptr<EffectInstance>> effectsMeant(const CheckboxEvent& event) const;
    WString trackName() const;
    bool canRename() const;
    void rename(const WString& name);
    Palette makeTitlePalette() const;
    void updateAll(eRedrawFlag redrawFlag);
    void updateTitle(eRedrawFlag redrawFlag);
    void updateTitleContext();
    void updateBypassButton(eRedrawFlag redrawFlag);
    void updateSettingsButton(eRedrawFlag redrawFlag);

    unsigned int flags_;
    bool titleIsName_; ///< and not one that the maker of the panel chose
    bool showsMask_ = false;
    EffectTitleBar titleBar_;
    TitleDrag titleDrag_{*this};
    GlobRef<EffectComponentPanel> maskPanel_;
    MethodCallback<EffectComponentPanel, CheckboxEvent> ledCallback_;
};

} // namespace oribund
