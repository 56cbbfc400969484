#include "oribund/panels/FXPanelFactory.h"

#include "oribund/host/effects/EffectInstance.h"
#include "oribund/panels/FXPanelCreationOptions.h"
#include "oribund/panels/iCompoundEffectViewBuilder.h"
#include "oribund/panels/iEffectPanelBuilder.h"
#include "oribund/panels/iVideoAnalysisViewBuilder.h"
#include "oribund/panels/iVideoOverlayRenderer.h"

#include <algorithm>
#include <utility>

namespace oribund
{

namespace
{

constexpr int kShutdownPriority = 100;

/**
 * The first entry of a list that matches; null when there is none. What is asked may change the list: entries that are
 * gone by their turn are passed over, entries that come meanwhile are not asked.
 */
template <class Entry, class Matches>
Entry findFirst(const std::vector<Entry>& list, Matches matches)
{
    const std::vector<Entry> present(list.begin(), list.end());
    for (const Entry& entry : present)
        if (std::find(list.begin(), list.end(), entry) != list.end() && matches(*entry))
            return entry;
    return {};
}

template <class Builder>
Builder* findViewBuilder(const std::vector<Builder*>& builders, const String& viewType)
{
    return findFirst(builders, [&viewType](Builder& builder) { return builder.viewType() == viewType; });
}

/** Takes the first such entry off a list that is complete again when the entry's destructor runs. */
template <class Entry>
void removeFirst(std::vector<Entry>& list, const Entry& entry)
{
    const auto found = std::find(list.begin(), list.end(), entry);
    if (found == list.end())
        return;
    [[maybe_unused]] const Entry released = std::exchange(*found, Entry());
    list.erase(found);
}

} // namespace

FXPanelFactory& FXPanelFactory::instance()
{
    static FXPanelFactory factory;
    return factory;
}

FXPanelFactory::FXPanelFactory()
{
    endWithHost();
}

FXPanelFactory::~FXPanelFactory() = default;

void FXPanelFactory::endWithHost()
{
    if (!std::exchange(endsWithHost_, true))
        Shutdown::addCallback([this](Shutdown::eExitType type) { shutdown(type); }, kShutdownPriority);
}

void FXPanelFactory::shutdown(Shutdown::eExitType)
{
    endsWithHost_ = false;
    emptying_ = true; // builders that go do not come back
    viewBuilders_.clear();
    analysisBuilders_.clear();
    std::exchange(panelBuilders_, {}).clear();
    emptying_ = false;
}

template <class List, class Builder>
void FXPanelFactory::append(List& list, const Builder& builder)
{
    if (!builder || emptying_)
        return;
    endWithHost();
    list.push_back(builder);
}

void FXPanelFactory::add(const Kt::Ptr<iEffectPanelBuilder>& builder)
{
    append(panelBuilders_, builder);
}

void FXPanelFactory::add(iCompoundEffectViewBuilder* builder)
{
    append(viewBuilders_, builder);
}

void FXPanelFactory::add(iVideoAnalysisViewBuilder* builder)
{
    append(analysisBuilders_, builder);
}

void FXPanelFactory::removePanelBuilder(const LightweightString<char>& tag)
{
    if (const auto builder = findPanelBuilder(iEffectPanelBuilder::kComponentPanel, tag))
        removeFirst(panelBuilders_, builder);
}

void FXPanelFactory::remove(iVideoAnalysisViewBuilder* builder)
{
    removeFirst(analysisBuilders_, builder);
}

Kt::Ptr<iEffectPanelBuilder> FXPanelFactory::findPanelBuilder(int kind, const String& tag) const
{
    return findFirst(panelBuilders_, [&](iEffectPanelBuilder& builder) { return builder.canBuild(kind, tag); });
}

bool FXPanelFactory::canMakeComponentPanel(const Kt::Ptr<EffectInstance>& effect) const
{
    return effect && findPanelBuilder(iEffectPanelBuilder::kComponentPanel, effect->tagTypeId());
}

EffectComponentPanel* FXPanelFactory::makeComponentPanel(const FXPanelCreationOptions& options) const
{
    const Kt::Ptr<EffectInstance> effect = options.viewHandle.getEffectPtr();
    if (!effect)
        return nullptr;
    const auto builder = findPanelBuilder(iEffectPanelBuilder::kComponentPanel, effect->tagTypeId());
    return builder ? builder->buildComponentPanel(options) : nullptr;
}

Kt::Ptr<iVideoOverlayRenderer> FXPanelFactory::createOverlayRenderer(Vob* vob,
                                                                     const Kt::Ptr<EffectInstance>& effect) const
{
    if (!vob || !effect)
        return {};
    const auto builder = findPanelBuilder(iEffectPanelBuilder::kOverlayRenderer, effect->tagTypeId());
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
