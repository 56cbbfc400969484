#pragma once

#include "oribund/host/base/Export.h"
#include "oribund/host/edit/monitor/FXVobClient.h"
#include "oribund/host/toolkit/layout/MinimizableGroup.h"
#include "oribund/host/toolkit/layout/TabOrderable.h"

namespace oribund
{

/**
 * A group of parameters in a generated panel. It remembers for all effects of its type whether the user has folded it,
 * and its title's menu resets what is in it.
 */
class ORIBUND_API ParamGroup : public MinimizableGroup, public FXVobClient, public TabOrderable
{
public:
    struct InitArgs : MinimizableGroup::InitArgs {
        using MinimizableGroup::InitArgs::InitArgs;
        FXViewHandle viewHandle;
        ParamPresentationDetails details;
    };

    explicit ParamGroup(const InitArgs& args);

    const ParamPresentationDetails& details() const { return details_; }

    /** It now shows a group that is titled otherwise. */
    void setDetails(const ParamPresentationDetails& details);

    /** The user wants the defaults of all parameters in the group back, at the current time where they are animated.
        One undo step. False when nothing may be changed. */
    bool userReset();

    Glob& tabGlob() override { return *this; }

    void getTabOrderables(std::vector<TabOrderable*>& stops) override;
    UIString tooltip() const override;

protected:
    void handleSizeToggle() override;

    bool hasMenu() const override { return true; }

    void reviewMenu(const Event* event) override;

private:
    std::vector<Kt::Ptr<EffectValParamBase>> paramsInside() const;

    ParamPresentationDetails details_;
};

} // namespace oribund
