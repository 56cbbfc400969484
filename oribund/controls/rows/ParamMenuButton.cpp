#include "oribund/controls/rows/ParamMenuButton.h"

#include "oribund/controls/binding/ParamReset.h"
#include "oribund/host/effects/params/EffectValParam.h"
#include "oribund/host/effects/params/ParamText.h"
#include "oribund/host/toolkit/core/Event.h"
#include "oribund/host/toolkit/menus/ValMenuButton.h"
#include "oribund/host/toolkit/widgets/Label.h"

namespace oribund
{

namespace
{

std::vector<UIString> itemsOf(const EffectValParamBase& param)
{
    return std::visit(
        []<class P>(const P& value) -> std::vector<UIString> {
            if constexpr (isChoiceParam<P>)
                return choiceLabels(value);
            else
                return {};
        },
        param.constantValue());
}

} // namespace

ParamMenuButton::ParamMenuButton(const FXViewHandle& handle, const EffectValParamBase& param, const InitArgs& args,
                                 const Kt::Ptr<ValAdaptorBase<unsigned>>& adaptor)
    : TitledMenuButtonPlain(args)
    , FXVobClient(handle)
    , finder_(param.id())
{
    showItems();
    menuButton().setDataAdaptor(adaptor);
}

ParamMenuButton::~ParamMenuButton() = default;

void ParamMenuButton::showItems()
{
    const EffectValParamBase* const param = finder_.find(getEffectPtr());
    if (!param)
        return;
    title().setTooltip(UIString(paramTooltip(*param)));
    menuButton().setItems(itemsOf(*param));
    relayout();
}

void ParamMenuButton::handleFXModifications(const ChangeDescription& change)
{
    // What its parameter tells by itself may be other items, such as inputs that have come.
    const bool isOfOthers = (change.flags & ChangeDescription::kToldByParams) && change.param != finder_.paramId();
    if (isOfOthers || (change.flags & ChangeDescription::kTimeOnly))
        return;
    showItems();
    // It may have been told of the selection before there was such an item.
    if (const auto adaptor = menuButton().getDataAdaptor())
        adaptor->forceWidgetUpdate(eRedrawFlag::Yes);
}

bool ParamMenuButton::handleMouseEvent(const Event& event)
{
    const bool isOnTitle = title().box().contains(event.position);
    if (event.code != EventCode::MouseDoubleClick || event.button != MouseButton::Left || !isOnTitle)
        return TitledMenuButtonPlain::handleMouseEvent(event);
    userReset();
    return true;
}

bool ParamMenuButton::userReset()
{
    const Kt::Ptr<EffectValParamBase> param(finder_.find(getEffectPtr()));
    return param && canInteract() && resetParam(*this, *param);
}

} // namespace oribund
