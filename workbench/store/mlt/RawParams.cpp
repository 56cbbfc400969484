#include "workbench/store/mlt/RawParams.h"

#include "workbench/model/EffectDescription.h"
#include "workbench/model/projection/ServiceText.h"
#include "workbench/store/mlt/MltClip.h"

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

struct Key {
    int frame = 0; // from the first
    double value = 0.0;
    bool smooth = false;
    bool held = false;
};

/** "when=value", with a sign before the "=" for a smooth or held piece; `when` is a frame or a time. */
std::optional<Key> keyOf(const ParamDescription& description, std::string_view text, const FormatData& format)
{
    const std::size_t equals = text.find('=');
    if (equals == std::string_view::npos || equals == 0)
        return std::nullopt;
    std::string_view when = text.substr(0, equals);
    Key key;
    key.smooth = when.back() == '~';
    key.held = when.back() == '|';
    if (key.smooth || key.held)
        when.remove_suffix(1);
    key.frame = frameOf(std::string(when), format, -1);
    const auto value = shownNumber(description, text.substr(equals + 1));
    if (key.frame < 0 || !value)
        return std::nullopt;
    key.value = *value;
    return key;
}

/** A held piece is straight up to the frame before the next key. What is no plain curve yields none. */
std::optional<ChannelData> curveOf(const ParamDescription& description, std::string_view raw, const KeySpan& span)
{
    ChannelData channel;
    const auto add = [&](int frame, const Key& key) {
        Keyframe added;
        added.time = static_cast<double>(frame + span.firstKey) / span.length;
        added.value = key.value;
        added.type = key.smooth ? KeyframeType::Smooth : KeyframeType::Linear;
        channel.push_back(added);
    };
    std::optional<Key> last;
    for (const std::string_view part : splitText(raw, ";")) {
        const auto key = keyOf(description, part, span.format);
        if (!key || channel.size() >= kMostKeys || (last && key->frame <= last->frame))
            return std::nullopt;
        if (last && last->held && key->frame > last->frame + 1)
            add(key->frame - 1, *last);
        add(key->frame, *key);
        last = key;
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
