#include "oribund/panels/FXPanelFactory.h"

#include "oribund/host/effects/EffectInstance.h"
#include "oribund/panels/FXPanelCreationOptions.h"
#include "oribund/panels/iCompoundEffectViewBuilder.h"
#include "oribund/panels/iEffectPanelBuilder.h"
#include "oribund/panels/iVideoAnalysisViewBuilder.h"
#include "oribund/panels/iVideoOverlayRenderer.h"

#include <algorithm>

namespace oribund
{

namespace
{

constexpr int kShutdownPriority = 100;

/** The first builder of a view type; null when there is none. */
template <class Builder>
Builder* findViewBuilder(const std::vector<Builder*>& builders, const String& viewType)
{
    const auto found = std::find_if(builders.begin(), builders.end(),
                                    [&viewType](Builder* builder) { return builder->viewType() == viewType; });
    return found == builders.end() ? nullptr : *found;
}

} // namespace

FXPanelFactory& FXPanelFactory::instance()
{
    static FXPanelFactory factory;
    return factory;
}

FXPanelFactory::FXPanelFactory()
{
    Shutdown::addCallback([this](Shutdown::eExitType type) { shutdown(type); }, kShutdownPriority);
}

FXPanelFactory::~FXPanelFactory() = default;

void FXPanelFactory::shutdown(Shutdown::eExitType)
{
    panelBuilders_.clear();
    viewBuilders_.clear();
    analysisBuilders_.clear();
}

void FXPanelFactory::add(const Kt::Ptr<iEffectPanelBuilder>& builder)
{
    panelBuilders_.push_back(builder);
}

void FXPanelFactory::add(iCompoundEffectViewBuilder* builder)
{
    viewBuilders_.push_back(builder);
}

void FXPanelFactory::add(iVideoAnalysisViewBuilder* builder)
{
    analysisBuilders_.push_back(builder);
}

void FXPanelFactory::removePanelBuilder(const LightweightString<char>& tag)
{
    const auto found = std::find_if(panelBuilders_.begin(), panelBuilders_.end(), [&tag](const auto& builder) {
        return builder->canBuild(iEffectPanelBuilder::kComponentPanel, tag);
    });
    if (found != panelBuilders_.end())
        panelBuilders_.erase(found);
}

void FXPanelFactory::remove(iVideoAnalysisViewBuilder* builder)
{
    const auto found = std::find(analysisBuilders_.begin(), analysisBuilders_.end(), builder);
    if (found != analysisBuilders_.end())
        analysisBuilders_.erase(found);
}

iEffectPanelBuilder* FXPanelFactory::findPanelBuilder(int kind, const EffectInstance& effect) const
{
    const String tag = effect.tagTypeId();
    const auto found = std::find_if(panelBuilders_.begin(), panelBuilders_.end(),
                                    [&](const auto& builder) { return builder->canBuild(kind, tag); });
    return found == panelBuilders_.end() ? nullptr : found->get();
}

bool FXPanelFactory::canMakeComponentPanel(const Kt::Ptr<EffectInstance>& effect) const
{
    return findPanelBuilder(iEffectPanelBuilder::kComponentPanel, *effect) != nullptr;
}

EffectComponentPanel* FXPanelFactory::makeComponentPanel(const FXPanelCreationOptions& options) const
{
    const Kt::Ptr<EffectInstance> effect = options.viewHandle.getEffectPtr();
    if (!effect)
        return nullptr;
    // Held while it works: a builder may remove itself.
    const Kt::Ptr<iEffectPanelBuilder> builder(findPanelBuilder(iEffectPanelBuilder::kComponentPanel, *effect));
    return builder ? builder->buildComponentPanel(options) : nullptr;
}

Kt::Ptr<iVideoOverlayRenderer> FXPanelFactory::createOverlayRenderer(Vob* vob,
                                                                     const Kt::Ptr<EffectInstance>& effect) const
{
    if (!vob || !effect)
        return {};
    const Kt::Ptr<iEffectPanelBuilder> builder(findPanelBuilder(iEffectPanelBuilder::kOverlayRenderer, *effect));
    return builder ? builder->buildOverlayRenderer(vob, effect) : Kt::Ptr<iVideoOverlayRenderer>();
}

bool FXPanelFactory::isRegistered(const LightweightString<char>& viewType) const
{
    return findViewBuilder(viewBuilders_, viewType) != nullptr;
}

unsigned int FXPanelFactory::getCompoundViewCaps(const LightweightString<char>& viewType) const
{
    iCompoundEffectViewBuilder* const builder = findViewBuilder(viewBuilders_, viewType);
    return builder ? builder->caps() : 0;
}

Glob* FXPanelFactory::makeCompoundEffectView(const LightweightString<char>& viewType, Glob* parent, Vob* vob,
                                             unsigned int caps, const IdStamp& effect, const XY<int>& size,
                                             const WidgetPosition& position, const WidgetSurround& surround) const
{
    iCompoundEffectViewBuilder* const builder = findViewBuilder(viewBuilders_, viewType);
    return builder ? builder->buildView(parent, vob, caps, effect, size, position, surround) : nullptr;
}

StandardPanel* FXPanelFactory::makeVideoAnalysisView(const LightweightString<char>& viewType, Glob* parent,
                                                     const XY<int>& size, const WidgetPosition& position) const
{
    iVideoAnalysisViewBuilder* const builder = findViewBuilder(analysisBuilders_, viewType);
    return builder ? builder->buildView(parent, size, position) : nullptr;
}

} // namespace oribund
