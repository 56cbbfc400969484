#pragma once

#include "oribund/host/base/LightweightString.h"
#include "oribund/host/base/NumRange.h"
#include "oribund/host/effects/keyframes/KeyframeSelection.h"

#include <map>
#include <vector>

namespace oribund
{

class Graph1dBase;
class TrackEffects;

/**
 * The selection of keyframes, which goes with them wherever a host puts them: through trims, moves and splits of what
 * their effect is on, and through undo.
 *
 * Remembers of each selected keyframe its place in its curve, its value and its edit time, and looks for it again when
 * it is told of a change. Where an effect has got another length and one keyframe cannot be found or is out of sight,
 * nothing stays selected: a part of what was selected would mislead who removes or moves it. User-interface thread
 * only.
 */
class FollowedSelection
{
public:
    using Key = KeyframeSelection::Key;

    /** `effects` outlives this. */
    explicit FollowedSelection(const TrackEffects& effects)
        : effects_(effects)
    {
    }

    /** Always the same object. */
    const KeyframeSelection& get() const { return selection_; }

    /** What is selected is given anew: times are those of keyframes. True when that was a change. */
    bool set(KeyframeSelection selection);

    /** The keyframes of an effect and parameter, or of all, may be others than they were, or elsewhere. */
    void follow(const IdStamp& effect, const IdStamp& param);

private:
    struct Mark {
        int index;
        double value; // of the first channel
    };

    /** The selected keyframes of one parameter, in the order of their times, when they were seen last. */
    struct Marks {
        String effectTag;
        NumRange<double> region;
        int graphSize = 0;
        std::vector<Mark> marks;
    };

    void remember(const Key& key);
    bool find(const Key& key, KeyframeSelection& found) const;
    bool findInPlace(const Key& key, const Graph1dBase& graph, KeyframeSelection& found) const;
    bool findByIndex(const Key& key, const Graph1dBase& graph, KeyframeSelection& found) const;
    bool findByEditTime(const Key& key, KeyframeSelection& found) const;
    bool findElsewhere(const Key& key, std::size_t which, double editTime, KeyframeSelection& found) const;

    const TrackEffects& effects_;
    KeyframeSelection selection_;
    std::map<Key, Marks> marks_; // of what is selected
};

} // namespace oribund
