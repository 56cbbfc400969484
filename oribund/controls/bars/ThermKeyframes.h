#pragma once

#include "oribund/controls/bars/ThermMarks.h"
#include "oribund/host/base/Export.h"
#include "oribund/host/base/FXTimeMapping.h"
#include "oribund/host/edit/monitor/CompoundEffectKeyframes.h"

#include <optional>
#include <vector>

namespace oribund
{

struct ThermGeometry;

/** The keyframes of a track's effects on a time bar: all of them together, in edit time. */
class ORIBUND_API ThermKeyframes
{
public:
    using KeyframeSets = CompoundEffectKeyframes::KeyframeSets;
    using FXKeyframe = FXKeyframeHelpers::FXKeyframe;

    /** Brings the sets, and where their effects are, in step with the track. True when there are others now. */
    bool update(CompoundEffectKeyframes& effects, const IdStamp& track);

    const KeyframeSets& sets() const { return sets_; }

    /** Where each effect runs, in the order in which they are applied; without those that run nowhere. */
    std::vector<NumRange<double>> regions() const;

    /** The edit time of the keyframe closest to an edit time. */
    std::optional<double> closest(double editTime) const;

    /** All distinct times in edit time, ascending; as they were at the last update(). */
    const std::vector<double>& times() const;

    /** All keyframes at an edit time. */
    std::vector<FXKeyframe> at(double editTime) const;

    /** Whether any keyframe is at an edit time. */
    bool hasAt(double editTime) const;

    /** For drawing. */
    ThermMarks marksOn(const ThermGeometry& shown) const;

private:
    struct Entry {
        FXKeyframeHelpers::KeyframeSet keyframes;
        NumRange<double> region;

        double inEffect(double editTime) const { return toFXTime(region, editTime).normalised; }

        double inEdit(double fxTime) const { return toEditTime(region, FXTime{fxTime}); }
    };

    KeyframeSets sets_;
    std::vector<Entry> entries_;
    mutable std::optional<std::vector<double>> times_; ///< collected at the first question
};

} // namespace oribund
