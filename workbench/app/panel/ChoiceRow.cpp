#include "workbench/app/panel/ChoiceRow.h"

#include "oribund/host/effects/params/EffectValParam.h"
#include "oribund/host/toolkit/menus/ValMenuButton.h"

#include <algorithm>

namespace workbench
{

using namespace oribund;

namespace
{

template <class X>
std::vector<UIString> namesOf(const ListParam<X>& list)
{
    std::vector<UIString> names;
    for (const auto& item : list.items())
        names.push_back(item.label);
    return names;
}

std::vector<UIString> namesOf(const VideoInputParam& inputs)
{
    const auto names = inputs.inputNames();
    return {names.begin(), names.end()};
}

std::vector<UIString> itemsOf(const EffectValParamBase& param)
{
    return std::visit(
        [](const auto& value) -> std::vector<UIString> {
            if constexpr (requires { namesOf(value); })
                return namesOf(value);
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

} // namespace workbench
