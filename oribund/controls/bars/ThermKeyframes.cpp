#include "oribund/controls/bars/ThermKeyframes.h"

#include "oribund/controls/bars/ThermGeometry.h"
#include "oribund/host/base/Numeric.h"
#include "oribund/host/effects/EffectInstance.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace oribund
{

bool ThermKeyframes::update(CompoundEffectKeyframes& effects, const IdStamp& track)
{
    effects.populateKeyframesForCompoundEffect(track, sets_);
    const std::vector<Entry> before = std::exchange(entries_, {});
    times_.reset();
    for (const auto& effect : effects.effectsAndPartsOf(track)) {
        const auto set = sets_.find(effect);
        const NumRange<double> region = effects.getEditRegion(effect->id());
        if (set != sets_.end() && region.length() > 0.0)
            entries_.push_back({set->second, region});
    }
    return !std::equal(before.begin(), before.end(), entries_.begin(), entries_.end(),
                       [](const Entry& one, const Entry& other) {
                           return one.keyframes.effect() == other.keyframes.effect() && one.region == other.region;
                       });
}

std::vector<NumRange<double>> ThermKeyframes::regions() const
{
    std::vector<NumRange<double>> regions;
    for (const Entry& entry : entries_)
        regions.push_back(entry.region);
    return regions;
}

std::optional<double> ThermKeyframes::closest(double editTime) const
{
    std::optional<double> found;
    for (const Entry& entry : entries_) {
        const auto nearest = entry.keyframes.nearest(entry.inEffect(editTime));
        if (!nearest)
            continue;
        const double candidate = entry.inEdit(*nearest);
        if (!found || std::abs(candidate - editTime) < std::abs(*found - editTime))
            found = candidate;
    }
    return found;
}

const std::vector<double>& ThermKeyframes::times() const
{
    if (times_)
        return *times_;
    std::vector<double>& all = times_.emplace();
    for (const Entry& entry : entries_) {
        for (const double time : entry.keyframes.times())
            all.push_back(entry.inEdit(time));
    }
    std::sort(all.begin(), all.end());
    all.erase(std::unique(all.begin(), all.end(), [](double a, double b) { return valEqualsVal(a, b); }), all.end());
    return all;
}

std::vector<ThermKeyframes::FXKeyframe> ThermKeyframes::at(double editTime) const
{
    std::vector<FXKeyframe> all;
    for (const Entry& entry : entries_) {
        const auto here = entry.keyframes.at(entry.inEffect(editTime));
        all.insert(all.end(), here.begin(), here.end());
    }
    return all;
}

bool ThermKeyframes::hasAt(double editTime) const
{
    return std::any_of(entries_.begin(), entries_.end(), [editTime](const Entry& entry) {
        return entry.keyframes.countAt(entry.inEffect(editTime)) > 0;
    });
}

ThermMarks ThermKeyframes::marksOn(const ThermGeometry& shown) const
{
    enum : char { kNone, kPlain, kSelected };

    if (shown.width <= 0 || !(shown.start < shown.end))
        return {};
    std::vector<char> pixels(static_cast<std::size_t>(shown.width) + 1, kNone);
    for (const Entry& entry : entries_) {
        const auto note = [&](double fxTime, bool selected) {
            const int x = std::clamp(shown.f2xi(entry.inEdit(fxTime)), 0, shown.width);
            char& pixel = pixels[static_cast<std::size_t>(x)];
            pixel = std::max<char>(pixel, selected ? kSelected : kPlain);
        };
        entry.keyframes.visitCells(entry.inEffect(shown.start), entry.inEffect(shown.end), shown.width, note);
    }
    ThermMarks marks;
    for (int x = 0; x <= shown.width; ++x) {
        if (const char pixel = pixels[static_cast<std::size_t>(x)]; pixel != kNone)
            marks.push_back({x, pixel == kSelected});
    }
    return marks;
}

} // namespace oribund
