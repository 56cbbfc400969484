#pragma once

#include "oribund/host/base/LightweightString.h"
#include "oribund/host/toolkit/layout/WidgetGroup.h"
#include "workbench/app/effects/EffectReorder.h"
#include "workbench/engine/protocol/EngineTypes.h"
#include "workbench/model/ModelEffect.h"

#include <functional>
#include <memory>
#include <set>
#include <vector>

namespace oribund
{
class EffectComponentPanel;
class Vob;
} // namespace oribund

namespace workbench
{

/** The panels of several effects, one below the other. The user drags them by their titles into another order. */
class EffectStack final : public oribund::WidgetGroup
{
public:
    using Effects = std::vector<oribund::Kt::Ptr<ModelEffect>>;

    /** What the user asks for. */
    struct Requests {
        std::function<void(ObjectId effect, int index)> move;
        std::function<void(ObjectId effect)> retry; ///< what is left out of the picture
    };

    using Folded = std::set<ObjectId>;

    /** The viewer outlives the stack. */
    EffectStack(const InitArgs& args, oribund::Vob& vob, Requests requests);
    ~EffectStack() override;

    /**
     * Shows these effects from now on. What stays keeps its panel, with the keyboard and what is being typed. `folded`
     * is brought in step with what the user has folded here; of the panels that come those are folded that are in it.
     */
    void show(const Effects& effects, Folded& folded);

    /** Has the panels say which of the effects are left out of the picture, and why. */
    void showLeftOut(const std::vector<LeftOutEffect>& leftOut);

    /** Where the panel of an effect is; empty when the effect is not among these. */
    oribund::Kt::Box<int> boxOf(ObjectId effect) const;

    void draw(oribund::CanvasRenderer& renderer) override;

protected:
    void handleChildResize(const oribund::Glob* child, const oribund::XY<int>& oldSize) override;

private:
    struct Entry {
        oribund::Kt::Ptr<ModelEffect> effect;
        oribund::EffectComponentPanel* panel = nullptr;
        const oribund::Glob* mask = nullptr; ///< the panel in it to which the others are aligned; to compare
        oribund::Glob* note = nullptr;       ///< below the panel; null for none
    };

    std::size_t focusedEntry() const;
    void dropPanelsBut(const Effects& effects);
    Entry makeEntry(const oribund::Kt::Ptr<ModelEffect>& effect);
    oribund::Glob* addNote(const ModelEffect& effect);
    void addBelow(std::unique_ptr<oribund::Glob> widget);
    void alignLabels();

    oribund::Vob& vob_;
    Requests requests_;
    std::vector<Entry> entries_; ///< from the top down
    EffectReorder reorder_;
};

} // namespace workbench
