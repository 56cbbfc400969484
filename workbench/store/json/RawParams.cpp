#include "workbench/store/json/RawParams.h"

#include "workbench/model/EffectDescription.h"
#include "workbench/model/projection/ServiceText.h"

#include "oribund/host/base/Numeric.h"

#include <algorithm>

namespace workbench
{

using oribund::Keyframe;
using oribund::KeyframeType;

namespace
{
constexpr std::size_t kMostKeys = 1'000'000;

const std::string* textOf(const PropertyList& properties, const std::string& name)
{
    for (const auto& [property, value] : properties)
        if (property == name)
            return &value;
    return nullptr;
}

/** "frame=value", with a sign before the "=" for a smooth or held piece. Times as frames only. */
std::optional<Keyframe> keyOf(const ParamDescription& description, std::string_view text, const KeySpan& span)
{
    const std::size_t equals = text.find('=');
    if (equals == std::string_view::npos || equals == 0)
        return std::nullopt;
    std::string_view time = text.substr(0, equals);
    Keyframe key;
    if (time.back() == '~') {
        key.type = KeyframeType::Smooth;
        time.remove_suffix(1);
    }
    const auto frame = oribund::parseInt(time);
    const auto value = shownNumber(description, text.substr(equals + 1));
    if (!frame || !value)
        return std::nullopt;
    key.time = static_cast<double>(*frame + span.firstKey) / span.length;
    key.value = *value;
    return key;
}

/** Held pieces, times of day and whatever else is no plain curve yield none. */
std::optional<ChannelData> curveOf(const ParamDescription& description, std::string_view raw, const KeySpan& span)
{
    ChannelData channel;
    for (const std::string_view part : splitText(raw, ";")) {
        const auto key = keyOf(description, part, span);
        if (!key || channel.size() >= kMostKeys || (!channel.empty() && key->time <= channel.back().time))
            return std::nullopt;
        channel.push_back(*key);
    }
    return channel.empty() ? std::nullopt : std::optional(channel);
}

std::optional<PlainValue> fromComponents(const ParamDescription& description, const PropertyList& properties)
{
    std::array<double, 4> numbers{0.0, 0.0, 0.0, 1.0};
    if (description.components.size() > numbers.size())
        return std::nullopt;
    for (std::size_t i = 0; i < description.components.size(); ++i) {
        const std::string* const raw = textOf(properties, description.components[i]);
        const auto number = raw ? shownNumber(description, *raw) : std::nullopt;
        if (!number)
            return std::nullopt;
        numbers[i] = *number;
    }
    if (description.kind == ParamKind::Point)
        return std::array<double, 2>{numbers[0], numbers[1]};
    const bool isColour = description.kind == ParamKind::Colour || description.kind == ParamKind::Range;
    return isColour ? std::optional<PlainValue>(numbers) : std::nullopt;
}

std::vector<std::string> propertiesOf(const ParamDescription& description)
{
    return description.components.empty() ? std::vector{description.property} : description.components;
}
} // namespace

std::optional<ParamData> paramFromRaw(const ParamDescription& description, const PropertyList& properties,
                                      const KeySpan& span)
{
    ParamData param;
    param.property = description.property;
    if (!description.components.empty()) {
        const auto constant = fromComponents(description, properties);
        if (!constant)
            return std::nullopt;
        param.constant = *constant;
        return param;
    }
    const std::string* const raw = textOf(properties, description.property);
    if (!raw)
        return std::nullopt;
    if (const auto constant = plainFromService(description, *raw)) {
        param.constant = *constant;
        return param;
    }
    const bool numeric = description.kind == ParamKind::Double || description.kind == ParamKind::Angle;
    auto curve = numeric && description.animatable ? curveOf(description, *raw, span) : std::nullopt;
    if (!curve)
        return std::nullopt;
    param.constant = curve->front().value;
    param.keyframed = true;
    param.channels.push_back(std::move(*curve));
    return param;
}

std::vector<ParamData> takeParams(const EffectDescription& description, PropertyList& properties, const KeySpan& span)
{
    std::vector<ParamData> params;
    for (const ParamDescription& param : description.params) {
        auto read = paramFromRaw(param, properties, span);
        if (!read)
            continue;
        params.push_back(std::move(*read));
        const std::vector<std::string> taken = propertiesOf(param);
        std::erase_if(properties, [&taken](const auto& property) {
            return std::find(taken.begin(), taken.end(), property.first) != taken.end();
        });
    }
    return params;
}

} // namespace workbench
