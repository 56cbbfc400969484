// A panel of the library in a plain window of Qt: the panel of a blur with two rows, and a label of Qt's below it that
// follows the effect. With a file name the program saves a picture of the window there and ends.

#include "Services.h"
#include "Viewer.h"

#include <oribund/host/effects/params/EffectValParam.h>
#include <oribund/host/notify/MethodCallback.h>
#include <oribund/panels/EffectComponentPanel.h>
#include <oribund/panels/FXPanelGenerator.h>
#include <skin/PanelSurface.h>
#include <skin/SkinApplication.h>

#include <QLabel>
#include <QVBoxLayout>

#include <memory>

using namespace oribund;

namespace
{

const IdStamp kRadius(1, 0, 1);
const IdStamp kOpacity(1, 0, 2);

Kt::Ptr<EffectInstance> makeBlur()
{
    auto blur = Kt::makePtr<EffectInstance>(IdStamp(1, 0, 0), "Examples:Blur", L"Blur");
    ParamInfo info;
    info.id = kRadius;
    info.name = "radius";
    info.description = L"Radius";
    blur->addParam(Kt::makePtr<EffectValParam<double>>(info, 4.0, 0.0, 100.0));
    info.id = kOpacity;
    info.name = "opacity";
    info.description = L"Opacity";
    blur->addParam(Kt::makePtr<EffectValParam<double>>(info, 1.0, 0.0, 1.0));
    return blur;
}

/** The frame that the library makes, with the controls that fit the parameters. */
class BlurPanel : public EffectComponentPanel, private FXPanelGenerator
{
public:
    explicit BlurPanel(const FXPanelCreationOptions& options)
        : EffectComponentPanel(options)
        , FXPanelGenerator(options.viewHandle, this, options.tabOrderManager)
    {
        generateUI();
    }
};

/** Says how large the radius is, whoever changes it. */
class RadiusLabel : public QLabel
{
public:
    explicit RadiusLabel(const Kt::Ptr<EffectValParam<double>>& radius)
        : radius_(radius)
    {
        changes_.attach(radius_->constantServer().notifier());
        show({});
    }

private:
    int show(const ValServerEvent<double>&)
    {
        setText(QStringLiteral("The radius is %1.").arg(radius_->constant()));
        return 0;
    }

    Kt::Ptr<EffectValParam<double>> radius_;
    MethodCallback<RadiusLabel, ValServerEvent<double>> changes_{this, &RadiusLabel::show};
};

} // namespace

int main(int argc, char** argv)
{
    const qt::SkinApplication application(argc, argv); // fonts, colours and metrics of both
    EmbeddingHost host;
    const auto blur = makeBlur();
    Viewer viewer(blur);

    QWidget window;
    auto* const surface = new qt::PanelSurface;
    auto* const column = new QVBoxLayout(&window);
    column->addWidget(surface, 1);
    column->addWidget(new RadiusLabel(blur->findParamAs<EffectValParam<double>>(kRadius)));
    surface->setPanel(std::make_unique<BlurPanel>(FXPanelCreationOptions(&viewer, blur, 420, &surface->canvas())));
    window.resize(460, 200);
    window.show();
    if (argc < 2)
        return QApplication::exec();

    blur->findParamAs<EffectValParam<double>>(kRadius)->setConstant(25.0);
    const bool saved = window.grab().save(QString::fromLocal8Bit(argv[1]));
    std::printf("%s\n", qPrintable(window.findChild<QLabel*>()->text()));
    return saved ? 0 : 1;
}
