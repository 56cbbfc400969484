#include "workbench/model/undo/EditCommand.h"

#include <algorithm>
#include <string>
#include <utility>

namespace workbench
{

EditCommand::EditCommand(oribund::WString title)
    : title_(std::move(title))
{
}

void EditCommand::add(EditChangePtr change)
{
    if (!change->isAssignment() || change->setsParams())
        recording_.clear();
    if (change->isAssignment()) {
        for (auto earlier = changes_.rbegin(); earlier != changes_.rend() && (*earlier)->isAssignment(); ++earlier)
            if ((*earlier)->absorb(*change))
                return;
    }
    changes_.push_back(std::move(change));
}

ParamDelta& EditCommand::paramDelta(ObjectId effect, const oribund::IdStamp& param)
{
    ParamDelta*& delta = recording_[{effect, param}];
    if (!delta) {
        auto added = std::make_unique<ParamDelta>(effect, param);
        delta = added.get();
        changes_.push_back(std::move(added));
    }
    return *delta;
}

void EditCommand::apply(Timeline& timeline, std::vector<oribund::EditModification>& told)
{
    for (const EditChangePtr& change : changes_) {
        change->apply(timeline);
        told.push_back(change->modification());
    }
}

void EditCommand::revert(Timeline& timeline, std::vector<oribund::EditModification>& told)
{
    for (auto change = changes_.rbegin(); change != changes_.rend(); ++change) {
        (*change)->revert(timeline);
        told.push_back((*change)->modification());
    }
}

bool EditCommand::isNull() const
{
    return std::all_of(changes_.begin(), changes_.end(), [](const EditChangePtr& change) { return change->isNull(); });
}

oribund::WString EditCommand::describe(const Timeline& timeline) const
{
    if (!title_.empty())
        return title_;
    int params = 0;
    int moved = 0;
    bool onlyMoved = true;
    const ParamDelta* last = nullptr;
    for (const EditChangePtr& change : changes_) {
        const auto* const delta = dynamic_cast<const ParamDelta*>(change.get());
        if (delta && !delta->isNull()) {
            ++params;
            last = delta;
            const int keyframes = delta->movedKeyframes();
            onlyMoved = onlyMoved && keyframes > 0;
            moved += keyframes;
        }
    }
    if (params == 1)
        return last->describe(timeline);
    if (params > 1 && onlyMoved)
        return oribund::toWide("Move " + std::to_string(moved) + " keyframes");
    return oribund::toWide("Change " + std::to_string(params) + " parameters");
}

void EditCommand::close(const Timeline& timeline)
{
    title_ = describe(timeline);
    recording_.clear();
    std::erase_if(changes_, [](const EditChangePtr& change) { return change->isNull(); });
    for (const EditChangePtr& change : changes_)
        change->finish();
}

} // namespace workbench
