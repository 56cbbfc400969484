#pragma once

#include "workbench/model/projection/Projection.h"

#include <set>
#include <string>
#include <vector>

namespace workbench
{

class AllowList;

/** Something of an edit that is not made. */
struct Refusal {
    enum class What {
        Clip,       ///< the whole clip; a dark red picture stands in for it
        Effect,     ///< one effect
        Transition, ///< one transition between clips or tracks
        Setting     ///< one property of a clip, effect or transition, which has its default then
    };

    What what = What::Effect;
    std::string subject; ///< id in the projection
    std::string message; ///< for a person, a whole sentence
};

/** A projection that holds nothing but what may be made. */
struct Admission {
    Projection projection;
    std::vector<Refusal> refusals;
    std::set<std::string> left; ///< ids of effects and transitions that stand there without doing anything
};

/**
 * The gate through which everything goes that is played, exported or written into a project file as a service. What is
 * refused keeps its place and id: a clip becomes a plain colour, an effect or transition one that is switched off. Each
 * clip comes out with the producer that reads it.
 */
Admission admit(Projection projection, const AllowList& allowed);

} // namespace workbench
