#include "workbench/model/EffectPresentation.h"

#include "oribund/host/base/LightweightString.h"
#include "workbench/model/Ids.h"

#include <algorithm>
#include <map>

namespace workbench
{

using Details = oribund::ParamPresentationDetails;

namespace
{

using Path = std::vector<std::string>; ///< headings, from the outermost to that of the group

/** The groups of an effect, all of them whatever is shown. */
class Groups
{
public:
    explicit Groups(const EffectDescription& description)
    {
        for (const ParamDescription& param : description.params) {
            Path path;
            for (const std::string& heading : param.groups) {
                path.push_back(heading);
                groups_.emplace(path, Group{static_cast<int>(groups_.size()) + 1, false});
            }
            if (param.collapsed && !path.empty())
                groups_.at(path).collapsed = true;
        }
    }

    Details start(const Path& path) const
    {
        return {stamp(path), Details::Kind::GroupStart,
                groups_.at(path).collapsed ? Details::kCollapsedGroup : kNoFlags,
                oribund::UIString(oribund::toWide(path.back()))};
    }

    Details end(const Path& path) const { return {stamp(path), Details::Kind::GroupEnd, kNoFlags, {}}; }

private:
    static constexpr unsigned char kNoFlags = 0;
    static constexpr int kGroupStamp = 3;

    struct Group {
        int number = 0;
        bool collapsed = false;
    };

    oribund::IdStamp stamp(const Path& path) const { return {kGroupStamp, groups_.at(path).number, 0}; }

    std::map<Path, Group> groups_;
};

bool isShown(const EffectDescription& description, const ParamDescription& param, const ValueText& valueOf)
{
    const ParamDescription* const decides = param.shownWith.empty() ? nullptr : description.find(param.shownWith);
    if (!decides)
        return true;
    const std::string value = valueOf(static_cast<std::size_t>(decides - description.params.data()));
    return std::find(param.shownWithValues.begin(), param.shownWithValues.end(), value) != param.shownWithValues.end();
}

} // namespace

Presentation presentationOf(const EffectDescription& description, const ValueText& valueOf)
{
    const Groups groups(description);
    Presentation entries;
    Path open;
    const auto closeTo = [&](std::size_t depth) {
        for (; open.size() > depth; open.pop_back())
            entries.push_back(groups.end(open));
    };
    for (std::size_t i = 0; i < description.params.size(); ++i) {
        const ParamDescription& param = description.params[i];
        if (!isShown(description, param, valueOf))
            continue;
        auto heading = std::mismatch(open.begin(), open.end(), param.groups.begin(), param.groups.end()).second;
        closeTo(static_cast<std::size_t>(heading - param.groups.begin()));
        for (; heading != param.groups.end(); ++heading) {
            open.push_back(*heading);
            entries.push_back(groups.start(open));
        }
        entries.push_back({paramStamp(static_cast<int>(i)), Details::Kind::Parameter, 0, {}});
    }
    closeTo(0);
    return entries;
}

bool hasConditions(const EffectDescription& description)
{
    return std::any_of(description.params.begin(), description.params.end(),
                       [](const ParamDescription& param) { return !param.shownWith.empty(); });
}

bool decidesForOthers(const EffectDescription& description, std::string_view property)
{
    return std::any_of(description.params.begin(), description.params.end(),
                       [property](const ParamDescription& param) { return param.shownWith == property; });
}

} // namespace workbench
