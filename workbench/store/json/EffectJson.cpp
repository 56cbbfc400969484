#include "workbench/store/json/EffectJson.h"

#include "workbench/model/MaskDescription.h"
#include "workbench/store/json/JsonFields.h"

#include <array>
#include <cmath>
#include <limits>
#include <optional>

namespace workbench
{

using oribund::Keyframe;
using oribund::KeyframeType;
using oribund::TangentHandle;

namespace
{
constexpr std::size_t kMostChannels = 4;

// A curve of a channel is saved as columns: one list of values, one text with a letter for the type of each keyframe,
// and rows for the few keyframes whose tangents a person has set. The times are the same for all channels.
constexpr char kSmooth = 'S';
constexpr char kLinear = 'L';

Json toJson(const ChannelData& channel)
{
    Json values = Json::array();
    Json tangents = Json::array();
    std::string types;
    for (std::size_t i = 0; i < channel.size(); ++i) {
        const Keyframe& key = channel[i];
        values.push_back(key.value);
        types += key.type == KeyframeType::Smooth ? kSmooth : kLinear;
        if (key.in != TangentHandle() || key.out != TangentHandle())
            tangents.push_back({i, key.in.dt, key.in.dv, key.in.automatic, key.out.dt, key.out.dv, key.out.automatic});
    }
    Json json{{"values", std::move(values)}, {"types", std::move(types)}};
    if (!tangents.empty())
        json["tangents"] = std::move(tangents);
    return json;
}

Json toJson(const ParamData& param)
{
    Json json{{"property", param.property}};
    std::visit([&json](const auto& value) { json["constant"] = value; }, param.constant);
    if (param.keyframed)
        json["keyframed"] = true;
    if (param.channels.empty())
        return json;
    Json times = Json::array();
    for (const Keyframe& key : param.channels.front())
        times.push_back(key.time);
    json["times"] = std::move(times);
    Json& channels = json["channels"] = Json::array();
    for (const ChannelData& channel : param.channels)
        channels.push_back(toJson(channel));
    return json;
}

template <std::size_t N>
std::array<double, N> numbersFrom(const Json& json)
{
    std::array<double, N> numbers;
    for (std::size_t i = 0; i < N; ++i)
        numbers[i] = json[i].get<double>();
    return numbers;
}

bool allNumbers(const Json& json)
{
    for (const Json& number : json)
        if (!number.is_number() || !std::isfinite(number.get<double>()))
            return false;
    return true;
}

std::optional<PlainValue> plainFrom(const Json& json)
{
    if (json.is_boolean())
        return json.get<bool>();
    if (json.is_string())
        return json.get<std::string>();
    if (json.is_number() && std::isfinite(json.get<double>()))
        return json.get<double>();
    if (json.is_array() && allNumbers(json)) {
        if (json.size() == 4)
            return numbersFrom<4>(json);
        if (json.size() == 2)
            return numbersFrom<2>(json);
    }
    return std::nullopt;
}

/** A handle on its own side of the keyframe; an automatic one where the numbers are none. */
TangentHandle handleFrom(const Json& dt, const Json& dv, const Json& automatic, double side)
{
    TangentHandle handle;
    if (!dt.is_number() || !dv.is_number() || !automatic.is_boolean())
        return handle;
    handle = {dt.get<double>(), dv.get<double>(), automatic.get<bool>()};
    const bool good = std::isfinite(handle.dt) && std::isfinite(handle.dv) && handle.dt * side >= 0.0;
    return good ? handle : TangentHandle();
}

/** Reads the keyframes of a parameter; keyframes that cannot be are left out of all of its channels. */
class CurveReader
{
public:
    explicit CurveReader(const JsonFields& fields)
        : times_(fields.list("times"))
        , channels_(fields.list("channels"))
    {
    }

    /** Empty without keyframes. */
    std::vector<ChannelData> read()
    {
        chooseKeys();
        std::vector<ChannelData> channels;
        if (channels_.size() <= kMostChannels)
            for (const Json& channel : channels_)
                channels.push_back(readChannel(channel));
        return channels;
    }

    bool lostAny() const { return lost_ || channels_.size() > kMostChannels; }

private:
    static const Json& valuesOf(const Json& channel)
    {
        static const Json none = Json::array();
        return channel.is_object() && channel.contains("values") && channel["values"].is_array() ? channel["values"]
                                                                                                 : none;
    }

    void chooseKeys()
    {
        double last = -std::numeric_limits<double>::infinity();
        for (std::size_t i = 0; i < times_.size(); ++i) {
            bool good =
                times_[i].is_number() && std::isfinite(times_[i].get<double>()) && times_[i].get<double>() > last;
            for (const Json& channel : channels_) {
                const Json& values = valuesOf(channel);
                good = good && i < values.size() && values[i].is_number() && std::isfinite(values[i].get<double>());
            }
            if (good) {
                keys_.push_back(i);
                last = times_[i].get<double>();
            }
        }
        lost_ = keys_.size() != times_.size();
    }

    ChannelData readChannel(const Json& json) const
    {
        const Json& values = valuesOf(json);
        std::string types;
        if (json.is_object() && json.contains("types") && json["types"].is_string())
            types = json["types"].get<std::string>();
        ChannelData channel(keys_.size());
        std::vector<std::size_t> placeOf(times_.size(), keys_.size());
        for (std::size_t i = 0; i < keys_.size(); ++i) {
            const std::size_t key = keys_[i];
            placeOf[key] = i;
            channel[i].time = times_[key].get<double>();
            channel[i].value = values[key].get<double>();
            channel[i].type = key < types.size() && types[key] == kSmooth ? KeyframeType::Smooth : KeyframeType::Linear;
        }
        if (json.is_object() && json.contains("tangents"))
            for (const Json& row : json["tangents"])
                if (row.is_array() && row.size() == 7 && row[0].is_number_unsigned())
                    if (const auto key = row[0].get<std::size_t>();
                        key < placeOf.size() && placeOf[key] < channel.size()) {
                        channel[placeOf[key]].in = handleFrom(row[1], row[2], row[3], -1.0);
                        channel[placeOf[key]].out = handleFrom(row[4], row[5], row[6], 1.0);
                    }
        return channel;
    }

    const Json& times_;
    const Json& channels_;
    std::vector<std::size_t> keys_;
    bool lost_ = false;
};

std::optional<ParamData> paramFrom(const Json& json, const std::string& effect, Warnings& warnings)
{
    const std::string property = JsonFields(json, effect, warnings).text("property");
    const JsonFields fields(json, effect + ", \"" + property + "\"", warnings);
    const auto constant = json.is_object() && json.contains("constant") ? plainFrom(json["constant"]) : std::nullopt;
    if (property.empty() || !constant) {
        fields.warn("the value cannot be read; the default is used");
        return std::nullopt;
    }
    ParamData param{property, *constant, fields.flag("keyframed", false), {}};
    CurveReader reader(fields);
    param.channels = reader.read();
    if (reader.lostAny())
        fields.warn("some keyframes cannot be read and were left out");
    return param;
}

/** What was saved of an effect or a mask by itself. */
EffectData withoutMask(const Json& json, Warnings& warnings)
{
    EffectData effect;
    const JsonFields fields(json, "An effect", warnings);
    effect.id = fields.integer("id", kNoObject, kNoObject, kHighestId);
    effect.service = fields.text("service");
    effect.enabled = fields.flag("enabled", true);
    for (const Json& param : fields.list("params"))
        if (auto read = paramFrom(param, "Effect \"" + effect.service + "\"", warnings))
            effect.params.push_back(std::move(*read));
    effect.rest = propertiesFrom(fields.list("rest"));
    effect.first = fields.integer("first", effect.first, 0, effect.last);
    effect.last = fields.integer("last", effect.last, 0, effect.last);
    effect.name = fields.text("name");
    return effect;
}
} // namespace

Json toJson(const PropertyList& properties)
{
    Json json = Json::array();
    for (const auto& [name, value] : properties)
        json.push_back(Json::array({name, value}));
    return json;
}

PropertyList propertiesFrom(const Json& json)
{
    PropertyList properties;
    if (json.is_array())
        for (const Json& pair : json)
            if (pair.is_array() && pair.size() == 2 && pair[0].is_string() && pair[1].is_string())
                properties.emplace_back(pair[0].get<std::string>(), pair[1].get<std::string>());
    return properties;
}

Json toJson(const EffectData& effect)
{
    Json json{{"id", effect.id}, {"service", effect.service}, {"enabled", effect.enabled}};
    Json& params = json["params"] = Json::array();
    for (const ParamData& param : effect.params)
        params.push_back(toJson(param));
    if (!effect.rest.empty())
        json["rest"] = toJson(effect.rest);
    if (effect.first != EffectData().first || effect.last != EffectData().last) {
        json["first"] = effect.first;
        json["last"] = effect.last;
    }
    if (!effect.name.empty())
        json["name"] = effect.name;
    for (const EffectData& mask : effect.mask)
        json["mask"] = toJson(mask);
    return json;
}

EffectData effectFrom(const Json& json, Warnings& warnings)
{
    EffectData effect = withoutMask(json, warnings);
    const auto mask = json.find("mask");
    if (mask == json.end())
        return effect;
    effect.mask.push_back(withoutMask(*mask, warnings));
    if (!isMask(effect.mask.front())) {
        warnings.add("The mask of the effect \"" + effect.service + "\" cannot be read and was left out.");
        effect.mask.clear();
    }
    return effect;
}

} // namespace workbench
