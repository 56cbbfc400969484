// The smallest host: installs the services, registers a builder, has a panel made for an effect of its own, works a
// control as a user would, and prints the tree of widgets. An editor does the same on a canvas with a skin.

#include "Services.h"
#include "Viewer.h"

#include <oribund/Version.h>
#include <oribund/controls/binding/EffectValParamAdaptor.h>
#include <oribund/host/canvas/Canvas.h>
#include <oribund/host/canvas/UifStd.h>
#include <oribund/host/effects/params/EffectValParam.h>
#include <oribund/host/toolkit/widgets/ValSlider.h>
#include <oribund/panels/EffectComponentPanel.h>
#include <oribund/panels/FXPanelFactory.h>
#include <oribund/panels/iEffectPanelBuilder.h>
#include <oribund/panels/iVideoOverlayRenderer.h>

#include <memory>

using namespace oribund;

namespace
{

Kt::Ptr<EffectInstance> makeBlur()
{
    auto blur = Kt::makePtr<EffectInstance>(IdStamp(1, 0, 0), "Examples:Blur", L"Blur");
    ParamInfo info;
    info.id = IdStamp(1, 0, 1);
    info.name = "radius";
    info.description = L"Radius";
    blur->addParam(Kt::makePtr<EffectValParam<double>>(info, 4.0, 0.0, 100.0));
    return blur;
}

/** The blur's panel: the frame that the library makes, with a slider bound to the radius. */
class BlurPanel : public EffectComponentPanel
{
public:
    explicit BlurPanel(const FXPanelCreationOptions& options)
        : EffectComponentPanel(options)
    {
        const auto radius = getEffectPtr()->findParamAs<EffectValParam<double>>(IdStamp(1, 0, 1));
        if (!radius)
            return;
        Slider::InitArgs args(200, static_cast<unsigned short>(UifStd::getControlHeight()));
        args.id = "radius";
        args.max = 100.0;
        slider = addWidget(std::make_unique<ValSlider>(args), UserTopLeft(0, 0));
        const auto adaptor = Kt::makePtr<FloatAdaptor>(getViewHandle(), EffectValParamAccessor<double>(*radius));
        slider->setDataAdaptor(Kt::Ptr<ValAdaptorBase<double>>(adaptor));
    }

    ValSlider* slider = nullptr;
};

class BlurPanelBuilder : public iEffectPanelBuilder
{
public:
    bool canBuild(int kind, const String& tag) override { return kind == kComponentPanel && tag == "Examples:Blur"; }

    EffectComponentPanel* buildComponentPanel(const FXPanelCreationOptions& options) override
    {
        return new BlurPanel(options);
    }

    Kt::Ptr<iVideoOverlayRenderer> buildOverlayRenderer(Vob*, const Kt::Ptr<EffectInstance>&) override { return {}; }
};

void printTree(const Glob& glob, int depth)
{
    std::printf("%*s%s %dx%d\n", 2 * depth, "", glob.idString().empty() ? "panel" : glob.idString().c_str(),
                glob.getWidth(), glob.getHeight());
    std::vector<Glob*> children;
    glob.getChildren(children);
    for (const Glob* child : children)
        printTree(*child, depth + 1);
}

} // namespace

int main()
{
    std::printf("oribund %s\n", oribundDllVersionStr);
    EmbeddingHost host;
    FXPanelFactory::instance().add(Kt::Ptr<iEffectPanelBuilder>(Kt::makePtr<BlurPanelBuilder>()));

    const auto blur = makeBlur();
    Viewer viewer(blur);
    Canvas canvas({320, 200});
    const std::unique_ptr<EffectComponentPanel> panel(
        FXPanelFactory::instance().makeComponentPanel(FXPanelCreationOptions(&viewer, blur, 320, &canvas)));
    if (!panel || !panel->open())
        return 1;
    printTree(*panel, 0);

    static_cast<BlurPanel&>(*panel).slider->userSet(25.0);
    std::printf("radius is now %g\n", blur->findParamAs<EffectValParam<double>>(IdStamp(1, 0, 1))->getValue(0.0));
    return 0;
}
