#pragma once

#include "oribund/host/base/IdStamp.h"
#include "oribund/host/base/LightweightString.h"
#include "oribund/host/notify/MethodCallback.h"
#include "oribund/host/toolkit/layout/WidgetGroup.h"
#include "oribund/host/toolkit/widgets/Button.h"
#include "workbench/engine/protocol/EngineTypes.h"
#include "workbench/model/ModelEffect.h"

#include <functional>
#include <memory>
#include <set>
#include <string>
#include <vector>

namespace oribund
{
class EffectComponentPanel;
class Vob;
} // namespace oribund

namespace workbench
{

/** The panels of several effects, one below the other, each with buttons that reorder and remove it. */
class EffectStack final : public oribund::WidgetGroup
{
public:
    using Effects = std::vector<oribund::Kt::Ptr<ModelEffect>>;

    /** What the buttons ask for. `by` is -1 or 1. */
    struct Requests {
        std::function<void(ObjectId effect, int by)> move;
        std::function<void(ObjectId effect)> remove;
        std::function<void(ObjectId effect)> retry; ///< what is left out of the picture
    };

    using Folded = std::set<ObjectId>;

    /** Shows those effects folded that are among `folded`. The viewer outlives the stack. */
    EffectStack(const InitArgs& args, oribund::Vob& vob, const Effects& effects, const Folded& folded,
                Requests requests);
    ~EffectStack() override;

    /** Has the panels say which of the effects are left out of the picture, and why. */
    void showLeftOut(const std::vector<LeftOutEffect>& leftOut);

    /** One of the buttons of an effect. */
    struct Place {
        ObjectId effect = kNoObject;
        std::string button;
    };

    /** Where the panel of an effect is; empty when the effect is not among these. */
    oribund::Kt::Box<int> boxOf(ObjectId effect) const;

    /** Brings a set in step with what the user has folded here; it keeps what it knows of other effects. */
    void noteFolded(Folded& folded) const;

    /** The button that has the keyboard; that of no effect when none has. */
    Place focusedButton() const;

    /** Gives a button the keyboard or, where it cannot be pressed now, another one of its effect. False when the
        effect is not among these. */
    bool focusButton(const Place& place);

    void draw(oribund::CanvasRenderer& renderer) override;

private:
    class TitleButton;

    void addPanel(oribund::Vob& vob, const oribund::Kt::Ptr<ModelEffect>& effect, bool first, bool last);
    void addNote(const oribund::WString& text);
    void addButtons(oribund::EffectComponentPanel& panel, const ModelEffect& effect, bool first, bool last);
    static void putTitleFirst(oribund::EffectComponentPanel& panel);
    void addBelow(std::unique_ptr<oribund::Glob> widget);

    void alignLabels();

    Requests requests_;
    std::vector<std::pair<ObjectId, oribund::EffectComponentPanel*>> panels_;
    std::vector<std::unique_ptr<TitleButton>> buttons_;
};

} // namespace workbench
