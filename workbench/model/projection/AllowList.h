#pragma once

#include "workbench/model/EffectCatalogue.h"
#include "workbench/model/projection/ValueCheck.h"

#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace workbench
{

/** The rules that the program carries with it; docs/allow-list.md describes them. */
std::string_view builtInAllowList();

/**
 * Which services may be made, and what their properties may hold. A project is a file that anybody may have written;
 * what it names is made only where this allows it. Effects are those of the catalogue that are not blocked, set up by
 * the parameters that their descriptions name. Values without state of the thread: const members from any thread.
 */
class AllowList
{
public:
    enum class Use {
        Producer,
        Filter,
        MaskFilter, ///< one of those that make a mask
        Transition
    };

    struct Source {
        std::string service;
        std::string resource;
    };

    /** A line of the rules that cannot be understood allows nothing. */
    explicit AllowList(EffectCatalogue effects, std::string_view rules = builtInAllowList());

    const EffectCatalogue& effects() const { return effects_; }

    /** Why an effect must not be made, a whole sentence; empty when it may. */
    std::string refuseEffect(std::string_view service) const;

    bool allowsService(Use use, std::string_view service) const;

    /** False also for every property of a service that is not allowed. */
    bool allowsProperty(Use use, std::string_view service, std::string_view property, std::string_view value) const;

    /** What shows a medium: the path of a file, or "service:resource" for one that is made. Empty when nothing may. */
    std::optional<Source> sourceOf(std::string_view medium) const;

private:
    using Properties = std::map<std::string, ValueKind, std::less<>>;

    struct Rule {
        Use use = Use::Producer;
        std::string service;
        Properties properties;
    };

    void addRule(std::string_view line);
    const Rule* findRule(Use use, std::string_view service) const;
    bool allowsSetting(const EffectDescription& effect, std::string_view property, std::string_view value) const;

    EffectCatalogue effects_;
    std::vector<Rule> rules_;
};

} // namespace workbench
