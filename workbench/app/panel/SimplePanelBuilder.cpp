#include "workbench/app/panel/SimplePanelBuilder.h"

#include "oribund/host/effects/EffectInstance.h"
#include "oribund/panels/FXPanelFactory.h"
#include "oribund/panels/iEffectPanelBuilder.h"
#include "oribund/panels/iVideoOverlayRenderer.h"
#include "workbench/app/panel/SimplePanel.h"

namespace workbench
{

using namespace oribund;

namespace
{

class SimplePanelBuilder : public iEffectPanelBuilder
{
public:
    bool canBuild(int kind, const String&) override { return kind == kComponentPanel; }

    EffectComponentPanel* buildComponentPanel(const FXPanelCreationOptions& options) override
    {
        return new SimplePanel(options);
    }

    Kt::Ptr<iVideoOverlayRenderer> buildOverlayRenderer(Vob*, const Kt::Ptr<EffectInstance>&) override { return {}; }
};

} // namespace

void registerSimplePanels()
{
    FXPanelFactory::instance().add(Kt::Ptr<iEffectPanelBuilder>(Kt::makePtr<SimplePanelBuilder>()));
}

} // namespace workbench
