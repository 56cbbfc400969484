#include "oribund/panels/PresentationPlan.h"

#include "oribund/colour/ColourRangePanel.h"
#include "oribund/host/effects/EffectInstance.h"
#include "oribund/panels/ParamWalk.h"

#include <algorithm>
#include <utility>

namespace oribund
{

namespace
{

using EntryKind = ParamPresentationDetails::Kind;

ParamShape shapeOf(const Kt::Ptr<EffectInstance>& effect, int index)
{
    const EffectValParamBase& param = *effect->paramAt(index);
    ParamShape shape{paramControlOf(param)};
    if (shape.control != ParamControl::ColourRange)
        return shape;
    shape.index = index;
    const auto params = ColourRangePanel::paramsOf(effect, static_cast<unsigned>(shape.index));
    shape.followers = std::max(0, static_cast<int>(params.size()) - 1);
    return shape;
}

} // namespace

class PresentationPlan::Builder
{
public:
    explicit Builder(const Kt::Ptr<EffectInstance>& effect)
        : effect_(effect)
        , walk_(*effect)
        , seen_(effect->params().size(), false)
    {
        plan_.entries_.reserve(effect->presentation().size());
    }

    PresentationPlan build()
    {
        for (const ParamPresentationDetails& details : effect_->presentation())
            add(details);
        plan_.unbalanced_ = plan_.unbalanced_ || !open_.empty();
        while (!open_.empty())
            end();
        return std::move(plan_);
    }

private:
    enum class Group { Shown, Flattened, Hidden };

    void add(const ParamPresentationDetails& details)
    {
        if (details.kind == EntryKind::GroupStart)
            start(details);
        else if (details.kind == EntryKind::GroupEnd)
            end();
        else if (!isHidden())
            addParam(details);
    }

    bool isHidden() const { return !open_.empty() && open_.back() == Group::Hidden; }

    void start(const ParamPresentationDetails& details)
    {
        if (isHidden() || details.isHidden()) {
            open_.push_back(Group::Hidden);
        } else if (depth_ == kDeepestGroup) {
            open_.push_back(Group::Flattened);
        } else {
            open_.push_back(Group::Shown);
            ++depth_;
            plan_.entries_.push_back({details, {}});
        }
    }

    void end()
    {
        if (open_.empty()) {
            plan_.unbalanced_ = true;
            return;
        }
        const Group group = open_.back();
        open_.pop_back();
        if (group != Group::Shown)
            return;
        --depth_;
        if (plan_.entries_.back().details.kind == EntryKind::GroupStart) {
            plan_.entries_.pop_back();
            return;
        }
        ParamPresentationDetails details;
        details.kind = EntryKind::GroupEnd;
        plan_.entries_.push_back({details, {}});
    }

    void addParam(const ParamPresentationDetails& details)
    {
        const int index = walk_.indexOf(details.id);
        if (index < 0 || !isNew(index))
            return;
        const ParamShape shape = shapeOf(effect_, index);
        for (int i = 1; i <= shape.followers; ++i)
            isNew(shape.index + i);
        plan_.entries_.push_back({details, shape});
        ++plan_.paramCount_;
    }

    /** Whether the parameter at an index comes up for the first time. */
    bool isNew(int index)
    {
        const bool before = seen_[static_cast<std::size_t>(index)];
        seen_[static_cast<std::size_t>(index)] = true;
        return !before;
    }

    Kt::Ptr<EffectInstance> effect_;
    ParamWalk walk_;
    PresentationPlan plan_;
    std::vector<Group> open_;
    std::vector<bool> seen_; ///< by index in the effect's list
    int depth_ = 0;
};

PresentationPlan PresentationPlan::of(const Kt::Ptr<EffectInstance>& effect)
{
    return Builder(effect).build();
}

} // namespace oribund
