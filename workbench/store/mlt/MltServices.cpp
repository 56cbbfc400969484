#include "workbench/store/mlt/MltServices.h"

#include "workbench/store/files/ProjectFormat.h"
#include "workbench/store/mlt/MltClip.h"

#include <algorithm>
#include <cstring>
#include <vector>

namespace workbench
{

namespace
{
bool isService(pugi::xml_node node)
{
    return isKind(node, {"producer", "chain", "playlist", "tractor"});
}
} // namespace

bool isKind(pugi::xml_node node, std::initializer_list<const char*> kinds)
{
    return std::any_of(kinds.begin(), kinds.end(),
                       [node](const char* kind) { return std::strcmp(node.name(), kind) == 0; });
}

bool isClip(pugi::xml_node node)
{
    return isKind(node, {"producer", "chain"});
}

bool isMaskFilter(pugi::xml_node filter)
{
    return !propertyOf(filter, format::kPartProperty).empty();
}

MltServices::MltServices(pugi::xml_node mlt)
    : mlt_(mlt)
{
    std::vector<pugi::xml_node> open{mlt_};
    while (!open.empty()) {
        const pugi::xml_node node = open.back();
        open.pop_back();
        if (isService(node))
            if (const pugi::xml_attribute id = node.attribute("id"))
                byId_.emplace(id.value(), node);
        for (const pugi::xml_node child : node.children())
            open.push_back(child);
    }
}

pugi::xml_node MltServices::find(const char* id) const
{
    const auto named = byId_.find(id);
    return named != byId_.end() ? named->second : pugi::xml_node();
}

pugi::xml_node MltServices::findMain() const
{
    const pugi::xml_node main = find(mlt_.attribute("producer").value());
    if (main && !isKept(main))
        return main;
    pugi::xml_node last;
    for (const pugi::xml_node child : mlt_.children())
        if (isService(child) && !isKept(child) && (!main || isKind(child, {"tractor"})))
            last = child;
    return last ? last : main;
}

pugi::xml_node MltServices::serviceOf(pugi::xml_node user) const
{
    if (const pugi::xml_node named = find(user.attribute("producer").value()))
        return named;
    for (const pugi::xml_node child : user.children())
        if (isService(child))
            return child;
    return {};
}

bool MltServices::isKept(pugi::xml_node service)
{
    return propertyOf(service, "xml_retain") == "1";
}

} // namespace workbench
