#include "workbench/model/projection/ParamBaker.h"

#include "oribund/host/effects/curves/BezierCurve.h"
#include "oribund/host/effects/params/EffectValParamBase.h"
#include "oribund/host/effects/params/ParamTraits.h"
#include "workbench/model/EffectDescription.h"
#include "workbench/model/KeyframeTimes.h"
#include "workbench/model/projection/ServiceText.h"

#include <algorithm>
#include <cmath>
#include <functional>

namespace workbench
{

using oribund::Graph1dBase;
using oribund::ParamValue;

namespace
{
/** The text of the value at an effect time. */
using TextAt = std::function<std::string(double fxTime)>;

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
        if (!isStraight)
            for (int frame = first + 1; frame < last; ++frame)
                text.straight(frame);
        text.straight(last);
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

std::string bakeSteps(const BakeSpan& span, TextAt textAt)
{
    AnimationText text(span, std::move(textAt));
    for (int frame = span.first; frame <= span.last; ++frame)
        text.hold(frame);
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
            properties.push_back({property, bakeSteps(span, textAt)});
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
