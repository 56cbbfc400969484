#pragma once

#include "workbench/model/EffectCatalogue.h"

#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace workbench
{

/**
 * What is known of effects beyond their own metadata, written by hand in JSON: titles, categories, ranges, units,
 * groups, lists, demo values, and effects that must not be used. docs/effect-overlay.md describes the format.
 */
class Overlay
{
public:
    /** Mistakes are added to `problems`; what is not affected by them is kept. */
    Overlay(std::string_view json, std::vector<std::string>& problems);
    ~Overlay();

    Overlay(const Overlay&) = delete;
    Overlay& operator=(const Overlay&) = delete;

    /** The effects that belong to this program and are not in the catalogue: whole but for their plug-ins. */
    std::vector<EffectDescription> missing(const EffectCatalogue& catalogue, std::vector<std::string>& problems) const;

    /** Improves a description, or says why the effect is blocked. Adds mistakes found on the way to `problems`. */
    void apply(EffectDescription& effect, std::vector<std::string>& problems) const;

    /** Why an effect, once it is described, can have no mask: what is said of it, else what goes for its kind. */
    std::string whyNoMask(const EffectDescription& effect) const;

private:
    struct Content;
    std::unique_ptr<Content> content_;
};

} // namespace workbench
