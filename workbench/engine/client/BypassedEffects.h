#pragma once

#include "workbench/engine/protocol/EngineTypes.h"
#include "workbench/model/projection/Projection.h"

#include <map>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace workbench
{

/**
 * The effects that ended a worker or held it up, and are left out of the picture for that. One is tried again when it
 * is set differently or when somebody asks for it; after its third time, only when somebody asks.
 */
class BypassedEffects
{
public:
    static constexpr int kTrials = 3;

    /** Values that were written since the edit was loaded, by effect and property. */
    using Updates = std::map<std::pair<std::string, std::string>, std::string>;

    /** `hung`: it held the worker up; otherwise it ended it. */
    void add(const ProjectedFilter& effect, const Updates& updates, bool hung);

    /** Those that are to be left out of this edit. What was set differently since is none of them any more. */
    std::vector<LeftOutEffect> in(const Projection& edit, const Updates& updates);

    /** An effect gets new settings. True when it was left out and is to be tried again. */
    bool retryAfterChange(const std::string& effect);

    /** Somebody asks for an effect, or for all of them where `effect` is empty. */
    void forgive(std::string_view effect);

    /** Whether only somebody's asking brings it back. */
    bool isOff(const std::string& effect) const;

private:
    struct Record {
        ProjectedProperties last; ///< as they were when it failed
        int failures = 0;
        bool bypassed = false;
        bool hung = false; ///< the last time
    };

    std::map<std::string, Record> records_;
};

} // namespace workbench
