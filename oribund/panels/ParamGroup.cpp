#include "oribund/panels/ParamGroup.h"

#include "oribund/controls/binding/ParamReset.h"
#include "oribund/host/canvas/UifStd.h"
#include "oribund/host/edit/EditGesture.h"
#include "oribund/host/services/TextIds.h"
#include "oribund/host/services/TextTable.h"
#include "oribund/host/toolkit/core/Menu.h"
#include "oribund/panels/GroupSizes.h"
#include "oribund/panels/PresentationPlan.h"

#include <algorithm>

namespace oribund
{

ParamGroup::ParamGroup(const InitArgs& args)
    : MinimizableGroup(args)
    , FXVobClient(args.viewHandle)
    , details_(args.details)
{
}

void ParamGroup::setDetails(const ParamPresentationDetails& details)
{
    details_ = details;
    setTitle(details.title);
}

void ParamGroup::getTabOrderables(std::vector<TabOrderable*>& stops)
{
    stops.push_back(this);
    MinimizableGroup::getTabOrderables(stops);
}

UIString ParamGroup::tooltip() const
{
    Glib::FontDesc titleFont = font();
    titleFont.bold = true;
    const bool isCut = UifStd::measure(displayText(getTitle()), titleFont) > getTitleArea().width() - titleTextOffset();
    const UIString own = MinimizableGroup::tooltip();
    return own.empty() && isCut ? getTitle() : own;
}

void ParamGroup::handleSizeToggle()
{
    if (const Kt::Ptr<EffectInstance> effect = getEffectPtr())
        GroupSizes::store(effect->tagTypeId(), displayText(getTitle()), getSizeState());
}

void ParamGroup::reviewMenu(const Event*)
{
    const UIString label = UIString(TextIds::kResetGroup).withPlaceholder(L"GROUP", displayText(getTitle()));
    const GlobRef<ParamGroup> self(this);
    MenuItem& item = editMenu().addItem(label, [self] {
        if (self)
            self->userReset();
    });
    const Kt::Ptr<EffectInstance> effect = getEffectPtr();
    const auto params = paramsInside();
    item.enabled =
        std::any_of(params.begin(), params.end(), [&](const auto& param) { return canEditParam(*effect, *param); });
}

std::vector<Kt::Ptr<EffectValParamBase>> ParamGroup::paramsInside() const
{
    std::vector<Kt::Ptr<EffectValParamBase>> params;
    const Kt::Ptr<EffectInstance> effect = getEffectPtr();
    if (!effect)
        return params;
    int depth = 0; // 1 in the group, more in groups within
    const PresentationPlan plan = PresentationPlan::of(effect);
    for (const PresentationPlan::Entry& entry : plan.entries()) {
        const auto kind = entry.details.kind;
        if (kind == ParamPresentationDetails::Kind::GroupStart)
            depth += depth > 0 || entry.details.id == details_.id ? 1 : 0;
        else if (kind == ParamPresentationDetails::Kind::GroupEnd)
            depth -= depth > 0 ? 1 : 0;
        for (int i = 0; depth > 0 && kind == ParamPresentationDetails::Kind::Parameter && i <= entry.shape.followers;
             ++i)
            params.push_back(effect->paramAt(effect->indexOfParam(entry.details.id) + i));
    }
    return params;
}

bool ParamGroup::userReset()
{
    if (!canInteract())
        return false;
    const EditModifier step(getViewedEdit(),
                            UIString(TextIds::kResetGroup).withPlaceholder(L"GROUP", displayText(getTitle())));
    bool done = false;
    for (const auto& param : paramsInside())
        done = resetParam(*this, *param) || done;
    return done;
}

} // namespace oribund
