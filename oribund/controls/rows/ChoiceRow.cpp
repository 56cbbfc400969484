#include "oribund/controls/rows/ChoiceRow.h"

#include "oribund/host/effects/params/EffectValParam.h"
#include "oribund/host/toolkit/menus/ValMenuButton.h"

#include <algorithm>

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

ChoiceRow::ChoiceRow(const FXViewHandle& handle, const EffectValParamBase& param, const ParamRowArgs& args,
                     const Kt::Ptr<ValAdaptorBase<unsigned>>& adaptor)
    : KeyframeCtrlsBase(handle, param.id(), args.width, args.labelWidth, 0, args.canvas)
{
    DropDownMenuButton::InitArgs menu(0, 0, args.canvas);
    menu.items = itemsOf(param);
    menu_ = addEditor(std::make_unique<ValMenuButton>(menu));
    menu_->setDataAdaptor(adaptor);
    finishRow();
}

void ChoiceRow::handleParamReplaced(EffectValParamBase& param)
{
    menu_->setItems(itemsOf(param));
    relayout();
}

void ChoiceRow::layoutEditors(const Kt::Box<int>& area)
{
    const int right = std::min(area.right, area.left + menu_->calcNaturalSize().x);
    putInto(*menu_, {area.left, area.top, right, area.bottom});
}

} // namespace oribund
