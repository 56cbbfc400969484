#pragma once

#include "oribund/host/base/Export.h"
#include "oribund/host/edit/monitor/FXVobClient.h"
#include "oribund/host/toolkit/layout/MinimizableGroup.h"
#include "oribund/panels/FXPanelCreationOptions.h"

namespace oribund
{

class Checkbox;
struct CheckboxEvent;

/**
 * The frame around the controls of one effect: a group whose title bar shows the effect's name and, as the creation
 * flags ask, the LED that switches the effect on and off. Panel builders return it or a class derived from it, which
 * fills the body. It follows the effect when that is renamed or switched elsewhere. User-interface thread only.
 */
class ORIBUND_API EffectComponentPanel : public MinimizableGroup, public FXVobClient
{
public:
    explicit EffectComponentPanel(const FXPanelCreationOptions& options);
    ~EffectComponentPanel() override;

    /** The flags with which it was created, FXPanelCreationOptions::Flag. */
    unsigned int getFlags() const { return flags_; }

    void setActive(bool active, eRedrawFlag redrawFlag = eRedrawFlag::Yes) override;

protected:
    /** Whether the user may change the effect: it is there, and its edit is not read-only. */
    bool isEditable() const;

    void drawBorder(CanvasRenderer& renderer) override;
    void handleFXModifications(const CompoundEffectMonitorClient::ChangeDescription& change) override;

private:
    void init(const FXPanelCreationOptions& options);
    void makeEnableLed();
    void nameEnableLed();
    int handleLEDClick(const CheckboxEvent& event);
    void updateTitle();
    void updateBypassButton(eRedrawFlag redrawFlag);

    unsigned int flags_;
    Checkbox* enableLed_ = nullptr;
    MethodCallback<EffectComponentPanel, CheckboxEvent> ledCallback_;
};

} // namespace oribund
