#pragma once

#include "oribund/controls/binding/ParamFinder.h"
#include "oribund/host/base/Export.h"
#include "oribund/host/edit/monitor/FXVobClient.h"
#include "oribund/host/toolkit/menus/TitledMenuButtonPlain.h"
#include "oribund/host/toolkit/values/ValAdaptorBase.h"

namespace oribund
{

/**
 * The row of a choice between items: its name, and a button that drops down a menu of them. A double click on the name
 * sets the default. The items are those of the parameter, also when that is replaced. User-interface thread only.
 */
class ORIBUND_API ParamMenuButton : public TitledMenuButtonPlain, public FXVobClient
{
public:
    /** The parameter is a list or a video input; the adaptor is one for its index. */
    ParamMenuButton(const FXViewHandle& handle, const EffectValParamBase& param, const InitArgs& args,
                    const Kt::Ptr<ValAdaptorBase<unsigned>>& adaptor);
    ~ParamMenuButton() override;

    /** The user wants the default back. False when it was refused. */
    bool userReset();

protected:
    bool handleMouseEvent(const Event& event) override;
    void handleFXModifications(const ChangeDescription& change) override;

private:
    void showItems();

    ParamFinder finder_;
};

} // namespace oribund
