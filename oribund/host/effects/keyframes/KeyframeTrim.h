#pragma once

#include "oribund/host/base/Export.h"
#include "oribund/host/base/IdStamp.h"
#include "oribund/host/base/Kt.h"
#include "oribund/host/notify/ChangeKind.h"

#include <functional>
#include <vector>

namespace oribund
{

class EffectInstance;
class EffectValParamBase;
class KeyframeSelection;

/**
 * The gesture of moving keyframes of several parameters by the same span of time.
 *
 * Remembers where they were, and sets their times from that, in whole frames: a frame is the least distance, too, that
 * they keep from keyframes that stay, unless they are closer to begin with. Nothing leaves its effect. What goes
 * missing in the course of the gesture is left out from then on, and so is an effect that gets another length.
 */
class ORIBUND_API KeyframeTrim
{
public:
    /** An effect as it is now, and its length in seconds; empty when there is none (any more). */
    struct Found {
        Kt::Ptr<EffectInstance> effect;
        double length;
    };

    using FindEffect = std::function<Found(const IdStamp&)>;

    /** `frame` in seconds. */
    KeyframeTrim(double frame, FindEffect findEffect);
    ~KeyframeTrim();

    /** What is selected of an effect that is `length` seconds long. */
    void add(const EffectInstance& effect, double length, const KeyframeSelection& selection);

    bool empty() const { return parts_.empty(); }

    /** Adds that much to what was asked for, and goes there as far as possible. Whether anything has moved. */
    bool moveBy(double seconds);

    /** Puts everything back that is not where it was. */
    void restore();

    /** Selects the keyframes where they are now; of what is gone or cannot be moved any more nothing is touched. */
    void select(KeyframeSelection& selection);

private:
    /** The keyframes of one parameter that move; times are effect times. */
    struct Part {
        IdStamp effect;
        IdStamp param;
        double length;
        long long shift; ///< how far they have been moved, in frames
        long long least; ///< limits of that
        long long most;
        int graphSize;
        std::vector<int> indices;
        std::vector<double> before;
        std::vector<double> now;
    };

    void findLimits(Part& part, const EffectValParamBase& param) const;
    long long wholeFrames(double seconds) const;
    bool relocate(Part& part, const EffectValParamBase& param) const;
    Kt::Ptr<EffectValParamBase> find(const Part& part) const;
    Kt::Ptr<EffectValParamBase> bringInStep(Part& part) const;
    static bool isBack(const Part& part, const EffectValParamBase& param);
    void dropLost();
    long long limited(double frames) const;
    bool move(Part& part, long long shift);

    double frame_;
    FindEffect findEffect_;
    std::vector<Part> parts_;
    double asked_ = 0.0;
    ChangeKind kind_ = ChangeKind::Start; ///< of the next change
};

} // namespace oribund
