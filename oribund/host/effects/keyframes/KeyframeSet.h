#pragma once

#include "oribund/host/base/Export.h"
#include "oribund/host/base/IdStamp.h"
#include "oribund/host/base/Kt.h"

#include <functional>
#include <memory>
#include <optional>
#include <vector>

namespace oribund
{

class EffectInstance;
class KeyframeSelection;

namespace FXKeyframeHelpers
{

/** A keyframe of a set: whose it is, and where. The time is effect time. */
struct FXKeyframe {
    IdStamp effect;
    IdStamp param;
    double time = 0.0;
    bool selected = false;
};

/**
 * The keyframes of all parameters of one effect, from its start to its end, together.
 *
 * A cheap value: copies share what they know, and all of them follow the effect. What takes all keyframes to answer is
 * worked out at the first question after a change, so that an edit costs nothing here. Times are effect times; two
 * within kValueTolerance are the same. A default-constructed set is empty. User-interface thread only.
 */
class ORIBUND_API KeyframeSet
{
public:
    KeyframeSet();

    /** `selection` lives until the set is told to forget it. */
    KeyframeSet(Kt::Ptr<EffectInstance> effect, const KeyframeSelection& selection);

    KeyframeSet(const KeyframeSet&);
    KeyframeSet& operator=(const KeyframeSet&);
    ~KeyframeSet();

    const Kt::Ptr<EffectInstance>& effect() const;

    bool empty() const;
    /** Those of all parameters, each for itself. */
    int size() const;

    /** How many parameters are animated. */
    int keyframedParamCount() const;

    /** How many parameters have a keyframe at that time. */
    int countAt(double fxTime) const;

    /** The time of the closest keyframe (the earlier of two), of the first one later, and of the last one earlier. */
    std::optional<double> nearest(double fxTime) const;
    std::optional<double> next(double fxTime) const;
    std::optional<double> previous(double fxTime) const;

    /** The keyframes at that time, in the order of the parameters. */
    std::vector<FXKeyframe> at(double fxTime) const;

    /** All distinct times, ascending. Valid until something changes. */
    const std::vector<double>& times() const;

    /**
     * For drawing: divides the span from `from` to `to` into `cells` equal parts and calls `draw` once for each that
     * has a keyframe, in ascending order, with the time of one in it, a selected one if there is any. Takes the time of
     * the cells rather than of the keyframes.
     */
    void visitCells(double from, double to, int cells,
                    const std::function<void(double fxTime, bool selected)>& draw) const;

    /** For who keeps the set: something about the keyframes has changed. */
    void invalidate();

    /** For who keeps the set: the effect or the selection goes. The set and its copies are empty from now on. */
    void forget();

private:
    struct Shared;

    std::shared_ptr<Shared> shared_;
};

} // namespace FXKeyframeHelpers
} // namespace oribund
