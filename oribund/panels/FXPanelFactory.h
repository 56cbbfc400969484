#pragma once

#include "oribund/host/base/Export.h"
#include "oribund/host/base/Kt.h"
#include "oribund/host/base/LightweightString.h"
#include "oribund/host/base/XY.h"
#include "oribund/host/services/Shutdown.h"

#include <vector>

namespace oribund
{

class EffectComponentPanel;
class EffectInstance;
class FXPanelCreationOptions;
class Glob;
class IdStamp;
class StandardPanel;
class Vob;
class iCompoundEffectViewBuilder;
class iEffectPanelBuilder;
class iVideoAnalysisViewBuilder;
class iVideoOverlayRenderer;
struct WidgetPosition;
struct WidgetSurround;

/**
 * The process-wide registry through which the user interface of an effect is asked for.
 *
 * The library knows no effect; modules that do register builders. Each query goes to the builders in the order in
 * which they were registered, and the first that matches serves it. A query that no builder matches gives null, an
 * empty pointer, 0 or false. Made on first use, by when a host must be installed; emptied by the host's shut-down, at
 * priority 100. What is registered after that ends with the host that is installed then. Builders may add and remove
 * builders, also those that are asked, from each of their operations and from their destructors. User-interface thread
 * only, but for the making.
 */
class ORIBUND_API FXPanelFactory
{
public:
    static FXPanelFactory& instance();

    FXPanelFactory(const FXPanelFactory&) = delete;
    FXPanelFactory& operator=(const FXPanelFactory&) = delete;

    /** Appends. A builder that is registered twice is in the list twice; an empty pointer is refused. */
    void add(const Kt::Ptr<iEffectPanelBuilder>& builder);
    /** Appends; the registrant keeps the builder alive. */
    void add(iCompoundEffectViewBuilder* builder);
    void add(iVideoAnalysisViewBuilder* builder);

    /** Removes the first panel builder that makes component panels for the tag. */
    void removePanelBuilder(const LightweightString<char>& tag);
    /** Removes the first entry that is the builder. */
    void remove(iVideoAnalysisViewBuilder* builder);

    const std::vector<iCompoundEffectViewBuilder*>& getCompoundViewBuilders() const { return viewBuilders_; }

    const std::vector<iVideoAnalysisViewBuilder*>& getVideoAnalysisViewBuilders() const { return analysisBuilders_; }

    /** False for an empty effect. */
    bool canMakeComponentPanel(const Kt::Ptr<EffectInstance>& effect) const;

    /** A new panel, which belongs to the caller. Null when the options yield no effect or no builder claims it. */
    EffectComponentPanel* makeComponentPanel(const FXPanelCreationOptions& options) const;

    Kt::Ptr<iVideoOverlayRenderer> createOverlayRenderer(Vob* vob, const Kt::Ptr<EffectInstance>& effect) const;

    /** Whether a compound view builder has that view type; compared by byte. */
    bool isRegistered(const LightweightString<char>& viewType) const;

    unsigned int getCompoundViewCaps(const LightweightString<char>& viewType) const;

    /** A new view, which belongs to its parent. */
    Glob* makeCompoundEffectView(const LightweightString<char>& viewType, Glob* parent, Vob* vob, unsigned int caps,
                                 const IdStamp& effect, const XY<int>& size, const WidgetPosition& position,
                                 const WidgetSurround& surround) const;

    /** A new view, which belongs to its parent. */
    StandardPanel* makeVideoAnalysisView(const LightweightString<char>& viewType, Glob* parent, const XY<int>& size,
                                         const WidgetPosition& position) const;

private:
    FXPanelFactory();
    ~FXPanelFactory();

    template <class List, class Builder>
    void append(List& list, const Builder& builder);
    void endWithHost();
    void shutdown(Shutdown::eExitType type);
    Kt::Ptr<iEffectPanelBuilder> findPanelBuilder(int kind, const String& tag) const;

    std::vector<Kt::Ptr<iEffectPanelBuilder>> panelBuilders_;
    std::vector<iCompoundEffectViewBuilder*> viewBuilders_;
    std::vector<iVideoAnalysisViewBuilder*> analysisBuilders_;
    bool emptying_ = false;
    bool endsWithHost_ = false;
};

} // namespace oribund
