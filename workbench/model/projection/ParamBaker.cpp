#include "workbench/model/projection/ParamBaker.h"

#include "oribund/host/effects/curves/BezierCurve.h"
#include "oribund/host/effects/params/EffectValParamBase.h"
#include "oribund/host/effects/params/ParamTraits.h"
#include "workbench/model/EffectDescription.h"
#include "workbench/model/KeyframeTimes.h"
#include "workbench/model/projection/ServiceText.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <functional>
#include <utility>
#include <vector>

namespace workbench
{

using oribund::Graph1dBase;
using oribund::ParamValue;

namespace
{
/** The text of the value at an effect time. */
using TextAt = std::function<std::string(double fxTime)>;

// Longer pieces are written as straight ones that nobody can tell from them: each frame would be too much to keep.
constexpr int kLongestExact = 20'000;
constexpr int kParts = 64;       // a long piece is looked at in no fewer
constexpr double kApart = 1e-7;  // of the range of values: how far a straight piece may be from the curve
constexpr double kNoise = 1e-12; // of the values: what calculating adds

/** Ends a piece is divided at: each frame of a short one, else those between which it is `alike(first, last)`. */
template <class Alike, class Visit>
class Division
{
public:
    Division(Alike alike, Visit visit)
        : alike_(std::move(alike))
        , visit_(std::move(visit))
    {
    }

    void run(int first, int last)
    {
        isLong_ = last - first > kLongestExact;
        const int parts = isLong_ ? kParts : 1;
        const auto end = [&](int part) {
            return first + static_cast<int>(static_cast<std::int64_t>(last - first) * part / parts);
        };
        for (int part = 0; part < parts; ++part)
            divide(end(part), end(part + 1));
    }

private:
    void divide(int first, int last) // NOLINT(misc-no-recursion): as deep as a length has bits
    {
        if (last - first <= 1 || (isLong_ && alike_(first, last)))
            return visit_(last);
        const int middle = first + (last - first) / 2;
        divide(first, middle);
        divide(middle, last);
    }

    Alike alike_;
    Visit visit_;
    bool isLong_ = false;
};

/** Where a piece is looked at to see whether it is the same everywhere. */
std::array<int, 3> framesWithin(int first, int last)
{
    const int quarter = (last - first) / 4;
    return {first + quarter, first + (last - first) / 2, last - quarter};
}

/** Whether a curve between two frames is as good as straight, in all channels. */
class Straightness
{
public:
    Straightness(const Graph1dBase& graph, const BakeSpan& span)
        : graph_(graph)
        , length_(span.length)
    {
        for (int channel = 0; channel < graph.channelCount(); ++channel) {
            double low = at(channel, span.first);
            double high = low;
            for (int key = 0; key < graph.size(); ++key) {
                low = std::min(low, graph.channel(channel).valueAt(key));
                high = std::max(high, graph.channel(channel).valueAt(key));
            }
            limits_.push_back((high - low) * kApart + std::max(std::abs(low), std::abs(high)) * kNoise);
        }
    }

    bool operator()(int first, int last) const
    {
        for (int channel = 0; channel < graph_.channelCount(); ++channel) {
            const double from = at(channel, first);
            const double slope = (at(channel, last) - from) / (last - first);
            for (const int frame : framesWithin(first, last))
                if (std::abs(from + slope * (frame - first) - at(channel, frame)) >
                    limits_[static_cast<std::size_t>(channel)])
                    return false;
        }
        return true;
    }

private:
    double at(int channel, int frame) const
    {
        return graph_.channel(channel).evaluate(KeyframeTimes::toTime(frame, length_));
    }

    const Graph1dBase& graph_;
    const int length_;
    std::vector<double> limits_; // how far a channel may be from straight
};

/** A keyframe string for a service: "frame=value" runs straight to the next, "frame|=value" holds until it. */
class AnimationText
{
public:
    AnimationText(const BakeSpan& span, TextAt textAt)
        : span_(span)
        , textAt_(std::move(textAt))
    {
    }

    void straight(int frame) { add(frame, "=", textAt(frame)); }

    /** Whether the text is the same from one frame to the other. */
    bool isSame(int first, int last) const
    {
        const std::string text = textAt(first);
        const auto within = framesWithin(first, last);
        return textAt(last) == text &&
               std::all_of(within.begin(), within.end(), [&](int frame) { return textAt(frame) == text; });
    }

    /** As straight(), where the value may be given for one frame after the other: what stays the same is left out. */
    void hold(int frame)
    {
        if (std::string text = textAt(frame); text != last_ || text_.empty())
            add(frame, "|=", std::move(text));
    }

    std::string take() { return std::move(text_); }

private:
    std::string textAt(int frame) const { return textAt_(KeyframeTimes::toTime(frame, span_.length)); }

    void add(int frame, const char* sign, std::string text)
    {
        if (frame <= lastFrame_ && !text_.empty())
            return;
        if (!text_.empty())
            text_ += ';';
        text_ += std::to_string(frame - span_.first) + sign + text;
        last_ = std::move(text);
        lastFrame_ = frame;
    }

    const BakeSpan& span_;
    TextAt textAt_;
    std::string text_;
    std::string last_;
    int lastFrame_ = 0;
};

/** Values that can be interpolated: both ends of what is straight, and every frame of what is not. */
std::string bakeNumbers(const Graph1dBase& graph, const BakeSpan& span, TextAt textAt)
{
    AnimationText text(span, std::move(textAt));
    Division curved(Straightness(graph, span), [&text](int frame) { text.straight(frame); });
    // Frames up to `to` that the piece from one keyframe to the next covers.
    const auto piece = [&](double from, double to, bool isStraight) {
        // Keyframes may lie further away than an int can say.
        if (from > span.last || to < span.first)
            return;
        const int first = static_cast<int>(std::ceil(std::max<double>(from, span.first)));
        const int last = static_cast<int>(std::floor(std::min<double>(to, span.last)));
        if (first > last)
            return;
        text.straight(first);
        if (isStraight)
            text.straight(last);
        else
            curved.run(first, last);
    };

    const int count = graph.size();
    const auto frameOf = [&](int key) { return KeyframeTimes::toFrame(graph.timeAt(key), span.length); };
    piece(span.first, frameOf(0), true);
    const int firstKey = std::max(graph.lowerIndex(KeyframeTimes::toTime(span.first, span.length)), 0);
    for (int key = firstKey; key + 1 < count && frameOf(key) <= span.last; ++key)
        piece(frameOf(key), frameOf(key + 1), graph.typeAt(key) == oribund::KeyframeType::Linear);
    text.straight(static_cast<int>(std::clamp<double>(std::ceil(frameOf(count - 1)), span.first, span.last)));
    return text.take();
}

std::string bakeSteps(const Graph1dBase& graph, const BakeSpan& span, TextAt textAt)
{
    AnimationText text(span, std::move(textAt));
    Division steps([&text](int first, int last) { return text.isSame(first, last); },
                   [&text](int frame) { text.hold(frame); });
    text.hold(span.first);
    int from = span.first;
    for (int key = 0; key <= graph.size() && from < span.last; ++key) {
        const double end = key < graph.size() ? KeyframeTimes::toFrame(graph.timeAt(key), span.length) : span.last;
        if (end <= from)
            continue;
        const int to = static_cast<int>(std::ceil(std::min<double>(end, span.last)));
        steps.run(from, to);
        from = to;
    }
    return text.take();
}

} // namespace

void bakeParam(const ParamDescription& description, const oribund::EffectValParamBase& param, const BakeSpan& span,
               ProjectedProperties& properties)
{
    const bool animated =
        param.functionType() == oribund::EffectValParamFnType::Keyframed && param.graph() && !param.graph()->empty();
    const auto write = [&](const std::string& property, bool isStepwise, const auto& textOf) {
        const TextAt textAt = [&](double fxTime) { return textOf(param.valueAt(fxTime)); };
        if (!animated)
            properties.push_back({property, textOf(param.constantValue())});
        else if (isStepwise || description.integer)
            properties.push_back({property, bakeSteps(*param.graph(), span, textAt)});
        else
            properties.push_back({property, bakeNumbers(*param.graph(), span, textAt)});
    };

    if (description.components.empty()) {
        write(description.property, description.kind == ParamKind::Colour,
              [&](const ParamValue& value) { return serviceText(description, value); });
        return;
    }
    for (std::size_t channel = 0; channel < description.components.size(); ++channel)
        write(description.components[channel], false,
              [&](const ParamValue& value) { return serviceNumber(description, channelOf(value, channel)); });
}

} // namespace workbench
