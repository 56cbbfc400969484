#pragma once

#include "workbench/app/session/Background.h"
#include "workbench/model/EditData.h"

#include <set>
#include <string>

namespace workbench
{

class Workspace;

/** Puts effects on segments. One that is not known to be sound is tried first, where it can do no harm. */
class EffectAdder
{
public:
    explicit EffectAdder(Workspace& workspace);

    /** Adds the effect as the last one of the selected segment, or says why not. */
    void add(const std::string& service);

    bool isBusy() const { return background_.pending() > 0; }

private:
    void addTo(ObjectId segment, const std::string& service);

    Workspace& workspace_;
    Background background_;
    std::set<std::string> sound_; ///< services that were tried and work
};

} // namespace workbench
