#pragma once

#include "oribund/host/base/Export.h"
#include "oribund/host/base/Kt.h"
#include "oribund/host/effects/params/ParamPresentationDetails.h"
#include "oribund/panels/ParamControls.h"

#include <vector>

namespace oribund
{

class EffectInstance;

/**
 * What a panel shows of an effect, in order: a list in which every group that starts ends, and is not empty. Made of
 * the effect's presentation list, which may be anything. A plain value: two are equal when the panels look the same.
 */
class ORIBUND_API PresentationPlan
{
public:
    /** Groups within groups beyond it would leave no room for their rows: what is in them stands in the last one. */
    static constexpr int kDeepestGroup = 12;

    struct Entry {
        ParamPresentationDetails details;
        ParamShape shape; ///< of a parameter

        bool operator==(const Entry&) const = default;
    };

    /** Shows nothing. */
    PresentationPlan() = default;

    /** Leaves out hidden groups with all that is in them, empty ones, and what is listed twice or does not exist. */
    static PresentationPlan of(const Kt::Ptr<EffectInstance>& effect);

    const std::vector<Entry>& entries() const { return entries_; }

    int paramCount() const { return paramCount_; }

    /** Whether starts and ends of groups did not match. */
    bool wasUnbalanced() const { return unbalanced_; }

    bool operator==(const PresentationPlan&) const = default;

private:
    class Builder;

    std::vector<Entry> entries_;
    int paramCount_ = 0;
    bool unbalanced_ = false;
};

} // namespace oribund
