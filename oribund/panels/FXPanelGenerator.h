#pragma once

#include "oribund/host/base/Colour.h"
#include "oribund/host/base/Export.h"
#include "oribund/host/base/Vector.h"
#include "oribund/host/canvas/Palette.h"
#include "oribund/host/edit/monitor/FXViewHandle.h"
#include "oribund/host/effects/EffectInstance.h"
#include "oribund/host/effects/params/EffectValParam.h"
#include "oribund/host/notify/MethodCallback.h"
#include "oribund/host/toolkit/core/GlobRef.h"
#include "oribund/host/toolkit/layout/StandardPanel.h"
#include "oribund/host/toolkit/layout/WidgetGroupEx.h"
#include "oribund/panels/PresentationPlan.h"

#include <functional>
#include <map>
#include <memory>
#include <vector>

namespace oribund
{

class ParamGroup;
struct CheckboxEvent;

/** The sizes of a panel, all of which follow from UifStd. */
enum class eUIMetric : int { WidgetGap = 0, GroupGap = 1, GroupMargin = 2, RowHeight = 3, LeastLabelWidth = 4 };

/**
 * Builds the user interface of an effect from the effect's own description: a control for each parameter, chosen by its
 * type and flags, in groups that can be folded, with their names in a column. A panel derives from it or holds one.
 *
 * The widgets belong to the panels that they stand in; the generator knows which shows which parameter. It may generate
 * any number of times: a widget whose parameter is still shown by the same kind of control is kept, with the keyboard
 * and what is half typed into it. Copies know the same widgets. User-interface thread only.
 */
class ORIBUND_API FXPanelGenerator
{
public:
    FXPanelGenerator();

    /** The panel is where the first level of widgets goes; it outlives the generator. Null for no tab order. */
    FXPanelGenerator(const FXViewHandle& handle, StandardPanel* panel, TabOrderManager* tabOrder);
    FXPanelGenerator(const FXPanelGenerator& other);
    FXPanelGenerator& operator=(const FXPanelGenerator& other);

    virtual ~FXPanelGenerator();

    void init(const FXViewHandle& handle, StandardPanel* panel, TabOrderManager* tabOrder);

    /** Shows the handle's own effect. */
    void generateUI();

    /** Shows an effect embedded in it, or its mask. */
    void generateUI(const IdStamp& effectId);

    /** The first level goes into the container, a StandardPanel inside the panel; null for the panel itself. */
    void generateUI(const IdStamp& effectId, Glob* container);

    /** Opens a group in what is open; what is added next stands in it. It must be closed with endGroup(). */
    WidgetGroupEx* startGroup(const EffectInstance::ParamPresentationDetails& details);

    /** Closes the group that was opened last, and puts it into the one around it. */
    void endGroup();

    /** Null when nothing matches. */
    WidgetGroupEx* findGroup(const IdStamp& id) const;
    WidgetGroupEx* findGroup(const LightweightString<wchar_t>& title) const;
    /** Appends them in the order of display. */
    void getAllGroups(Vector<WidgetGroupEx*>& groups);

    /** The widget made for the parameter's id; null when there is none. */
    Glob* findWidgetForParam(const EffectValParamBase* param) const;

    /** Gives the names at the top level so much room instead of the initial label width, and those in groups less. */
    void setLabelWidth(unsigned short width);

    /**
     * Shows of what was generated only the controls of parameters that are wanted, with the groups that they stand in,
     * unfolded; without a function all, and groups as the user left them. Holds until the next generation of others.
     */
    void showOnly(const std::function<bool(const EffectValParamBase&)>& isWanted);

    static unsigned short calcSize(eUIMetric metric);
    static WidgetSurround getGroupSeparator();
    static Colour getGroupTitleColour();

    /** Whether a group begins folded: what the user left, else what is usual for the effect, else `fallback`. */
    static Glob::eSizeState getInitialSizeState(const LightweightString<char>& effectTag,
                                                const LightweightString<wchar_t>& groupTitle,
                                                Glob::eSizeState fallback);
    static Glob::eSizeState getInitialSizeState(const LightweightString<char>& effectTag,
                                                const EffectInstance::ParamPresentationDetails& details,
                                                Glob::eSizeState fallback);
    static void setInitialSizeState(const LightweightString<char>& effectTag,
                                    const EffectInstance::ParamPresentationDetails& details, Glob::eSizeState state);

protected:
    // Each makes the control of one parameter; null for none.
    virtual Glob* createParamUI(const Kt::Ptr<EffectValParam<VideoInputParam>>& param, unsigned short width,
                                Canvas* canvas);
    virtual Glob* createParamUI(const Kt::Ptr<EffectValParam<ListParam<int>>>& param, unsigned short width,
                                Canvas* canvas);
    virtual Glob* createParamUI(const Kt::Ptr<EffectValParam<ListParam<LightweightString<char>>>>& param,
                                unsigned short width, Canvas* canvas);
    virtual Glob* createParamUI(const Kt::Ptr<EffectValParam<bool>>& param, unsigned short width, Canvas* canvas);
    virtual Glob* createParamUI(const Kt::Ptr<EffectValParam<Vector2d>>& param, unsigned short width, Canvas* canvas);
    virtual Glob* createParamUI(const Kt::Ptr<EffectValParam<ColourData>>& param, unsigned short width, Canvas* canvas);
    virtual Glob* createParamUI(const Kt::Ptr<EffectValParam<Angle>>& param, unsigned short width, Canvas* canvas);
    virtual Glob* createParamUI(const Kt::Ptr<EffectValParam<double>>& param, unsigned short width, Canvas* canvas);

    /** Adds a new widget below the one added last to what is open; takes ownership of it. */
    virtual void addWidgetInternal(const Kt::Ptr<EffectValParamBase>& param, Glob* widget);
    virtual void addWidgetInternal(const Kt::Ptr<EffectValParamBase>& param, Glob* widget,
                                   const WidgetPosition& position, WidgetSurround surround);

    /** The room that the widest name needs, within limits: so wide is the column of names at the top level. */
    unsigned short calcInitialLabelWidth() const;

    /** The same where the next widget goes: names end at the same x at every depth. */
    unsigned short calcLabelWidth() const;

    /** What a control calls its parameter. */
    LightweightString<wchar_t> makeParamName(const Kt::Ptr<EffectValParamBase>& param) const;

    /** What is shown since the last generation. */
    const PresentationPlan& getPlan() const { return plan_; }

private:
    struct Shown {
        GlobRef<Glob> widget;
        ParamShape shape;
    };

    using WidgetMap = std::map<IdStamp, Shown>;
    struct Level;
    class Regeneration;

    Kt::Ptr<EffectInstance> findTarget(const IdStamp& effectId);
    void showPlan(PresentationPlan plan, const EffectInstance& effect, StandardPanel& root);
    void destroyLeftOver();
    void refreshKept(const EffectInstance& effect);
    void showParam(const PresentationPlan::Entry& entry, const EffectInstance& effect, int index);
    Glob* takeKept(const PresentationPlan::Entry& entry);
    ParamGroup* takeKeptGroup(const EffectInstance::ParamPresentationDetails& details);
    void keep(Glob& widget, const WidgetSurround& surround);
    void showGroup(ParamGroup& group, bool isShown, bool isUnfolded) const;
    bool showControl(const PresentationPlan::Entry& entry, const EffectInstance& effect,
                     const std::function<bool(const EffectValParamBase&)>& isWanted);
    void openLevel(StandardPanel& panel);
    void closeLevel();
    std::unique_ptr<ParamGroup> makeGroup(const EffectInstance::ParamPresentationDetails& details);
    StandardPanel* currentPanel() const;
    bool isComplete() const;

    static unsigned short clampedWidth(int pixels);
    void addWidgetToTabOrder(Glob* widget);
    WidgetPosition calcWidgetPosition();
    int handleBinaryItemEvent(const CheckboxEvent& event);

    FXViewHandle handle_;
    FXViewHandle target_; ///< of the effect that is shown: itself, or a child or the mask of it
    StandardPanel* panel_ = nullptr;
    TabOrderManager* tabOrder_ = nullptr;
    Glob* container_ = nullptr; ///< into which the next widget goes
    unsigned short containerWidth_ = 0;
    unsigned short initialLabelWidth_ = 0;
    unsigned short depth_ = 1;
    bool groupSizeChange_ = true;
    Palette palette_;
    WidgetSurround nextSurround_;
    PresentationPlan plan_;
    GlobRef<StandardPanel> root_; ///< where the first level went
    WidgetMap widgets_;
    std::vector<GlobRef<ParamGroup>> groups_;

    // Not copied.
    std::vector<Level> levels_;            ///< what is open, from the outermost
    std::unique_ptr<Regeneration> before_; ///< what was shown before, while a generation runs
    using SwitchCallback = MethodCallback<FXPanelGenerator, CheckboxEvent>;
    std::map<IdStamp, std::unique_ptr<SwitchCallback>> switches_;
};

} // namespace oribund
