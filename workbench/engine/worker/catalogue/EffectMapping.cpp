#include "workbench/engine/worker/catalogue/EffectMapping.h"

#include "workbench/engine/worker/catalogue/MetadataText.h"
#include "workbench/engine/worker/catalogue/ParamMapping.h"
#include "workbench/engine/worker/catalogue/PointPairs.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <map>
#include <string_view>
#include <utility>

namespace workbench
{

namespace
{

bool hasTag(const RawEffect& raw, std::string_view tag)
{
    return std::find(raw.tags.begin(), raw.tags.end(), tag) != raw.tags.end();
}

using Keywords = std::pair<std::string_view, std::string_view>;

// The first word found in title or description decides, so the narrow ones stand first.
constexpr std::array<Keywords, 34> kVideoCategories = {{{"denois", "Repair"},
                                                        {"deinterlac", "Repair"},
                                                        {"deshake", "Repair"},
                                                        {"stabiliz", "Repair"},
                                                        {"deblock", "Repair"},
                                                        {"deband", "Repair"},
                                                        {"detect", "Analysis"},
                                                        {"scope", "Analysis"},
                                                        {"histogram", "Analysis"},
                                                        {"waveform", "Analysis"},
                                                        {"measure", "Analysis"},
                                                        {"chroma key", "Keying"},
                                                        {"transparen", "Keying"},
                                                        {"alpha", "Keying"},
                                                        {"mask", "Keying"},
                                                        {"spill", "Keying"},
                                                        {"blur", "Blur and sharpen"},
                                                        {"sharp", "Blur and sharpen"},
                                                        {"smooth", "Blur and sharpen"},
                                                        {"edge", "Stylise"},
                                                        {"noise", "Stylise"},
                                                        {"glow", "Stylise"},
                                                        {"pixel", "Stylise"},
                                                        {"color", "Colour"},
                                                        {"colour", "Colour"},
                                                        {"luma", "Colour"},
                                                        {"hue", "Colour"},
                                                        {"bright", "Colour"},
                                                        {"distort", "Distort"},
                                                        {"lens", "Distort"},
                                                        {"flip", "Transform"},
                                                        {"rotat", "Transform"},
                                                        {"crop", "Transform"},
                                                        {"scale", "Transform"}}};

constexpr std::array<Keywords, 12> kAudioCategories = {{{"equaliz", "Sound: tone"},
                                                        {"pass filter", "Sound: tone"},
                                                        {"shelf", "Sound: tone"},
                                                        {"frequenc", "Sound: tone"},
                                                        {"compress", "Sound: level"},
                                                        {"limit", "Sound: level"},
                                                        {"loudness", "Sound: level"},
                                                        {"volume", "Sound: level"},
                                                        {"stereo", "Sound: channels"},
                                                        {"channel", "Sound: channels"},
                                                        {"echo", "Sound: space"},
                                                        {"reverb", "Sound: space"}}};

template <std::size_t size>
std::string findCategory(const std::array<Keywords, size>& table, const RawEffect& raw, std::string_view otherwise)
{
    const std::string text = lowerCase(raw.title + ' ' + raw.description);
    for (const auto& [word, category] : table)
        if (text.find(word) != std::string::npos)
            return std::string(category);
    return std::string(otherwise);
}

/** "f" for "frequency", "la" for "luma_amount": the same setting under a shorter name. */
bool isAliasOf(const RawParam& shortName, const RawParam& longName)
{
    return shortName.identifier.starts_with("av.") && shortName.identifier.size() < longName.identifier.size() &&
           shortName.identifier[3] == longName.identifier[3] && shortName.description == longName.description &&
           shortName.type == longName.type && shortName.defaultText == longName.defaultText &&
           shortName.minimum == longName.minimum && shortName.maximum == longName.maximum;
}

bool isAlias(const RawParam& param, const std::vector<RawParam>& all)
{
    return std::any_of(all.begin(), all.end(), [&](const RawParam& other) { return isAliasOf(param, other); });
}

/** Without "(*DEPRECATED*)" and its like. */
std::string withoutRemark(std::string title)
{
    const std::size_t remark = title.find("(*");
    return remark == std::string::npos ? title : title.substr(0, remark);
}

/** Several settings may describe themselves in the same words; each of them then shows its own name as well. */
void tellNamesApart(std::vector<ParamDescription>& params)
{
    std::map<std::string, int> uses;
    for (const ParamDescription& param : params)
        ++uses[param.name];
    for (ParamDescription& param : params)
        if (uses[param.name] > 1)
            if (const std::string own = readableName(param.property); own != param.name)
                param.name += " (" + own + ')';
}

std::string titleOf(const RawEffect& raw)
{
    if (std::string title = readableName(withoutRemark(raw.title)); !title.empty())
        return title;
    const std::size_t dot = raw.service.rfind('.');
    return readableName(dot == std::string::npos ? raw.service : raw.service.substr(dot + 1));
}

std::string checkDemo(const ParamDescription& param)
{
    if (!param.demo)
        return {};
    if (const int* item = std::get_if<int>(&*param.demo)) {
        const bool list = param.kind == ParamKind::IntList || param.kind == ParamKind::TextList;
        const int count = list ? static_cast<int>(param.items.size()) : 2;
        return *item >= 0 && *item < count ? "" : "demo value is not in the list";
    }
    if (const double* number = std::get_if<double>(&*param.demo))
        return *number >= param.minimum && *number <= param.maximum ? "" : "demo value is out of range";
    return {};
}

std::string checkList(const ParamDescription& param)
{
    const int count = static_cast<int>(param.items.size());
    if (count == 0)
        return "list without items";
    return param.defaultItem >= 0 && param.defaultItem < count ? "" : "default is not in the list";
}

std::string checkRange(const ParamDescription& param)
{
    for (const double value : {param.minimum, param.maximum, param.defaultValue, param.scale, param.offset})
        if (!std::isfinite(value))
            return "a number is not finite";
    if (param.scale == 0.0)
        return "scale is 0";
    if (!(param.minimum < param.maximum))
        return "range is empty";
    if (param.defaultValue < param.minimum || param.defaultValue > param.maximum)
        return "default is out of range";
    return {};
}

/** The numbers of a Range or Point, of which each has the range. */
template <std::size_t size>
std::string checkNumbers(const ParamDescription& param, const std::array<double, size>& numbers)
{
    for (const double number : numbers) {
        ParamDescription one = param;
        one.defaultValue = number;
        if (std::string problem = checkRange(one); !problem.empty())
            return problem;
    }
    return {};
}

std::string checkSoftRange(const ParamDescription& param)
{
    if (param.components.size() != param.defaultColour.size())
        return "a range needs four components";
    return std::is_sorted(param.defaultColour.begin(), param.defaultColour.end())
               ? checkNumbers(param, param.defaultColour)
               : "default is not in ascending order";
}

/** Only what cannot be animated decides: it has one value at all times. */
std::string checkCondition(const EffectDescription& effect, const ParamDescription& param)
{
    if (param.shownWith.empty())
        return {};
    const ParamDescription* const decides = effect.find(param.shownWith);
    if (!decides || decides == &param)
        return "what it is shown with is not there";
    if (decides->kind == ParamKind::Bool)
        return {};
    if (decides->kind != ParamKind::IntList && decides->kind != ParamKind::TextList)
        return "what it is shown with is neither a list nor a switch";
    const auto isItem = [decides](const std::string& raw) {
        return std::any_of(decides->items.begin(), decides->items.end(),
                           [&raw](const ListItem& item) { return item.raw == raw; });
    };
    return std::all_of(param.shownWithValues.begin(), param.shownWithValues.end(), isItem)
               ? ""
               : "what it is shown with has no such item";
}

} // namespace

std::optional<EffectDescription> mapEffect(const RawEffect& raw)
{
    const bool audio = hasTag(raw, "Audio");
    if ((!audio && !hasTag(raw, "Video")) || hasTag(raw, "Hidden"))
        return std::nullopt;

    EffectDescription effect;
    effect.service = raw.service;
    effect.title = titleOf(raw);
    effect.help = raw.description;
    effect.medium = audio ? EffectDescription::Medium::Audio : EffectDescription::Medium::Video;
    effect.category =
        audio ? findCategory(kAudioCategories, raw, "Sound: other") : findCategory(kVideoCategories, raw, "Other");
    for (const RawParam& rawParam : raw.params) {
        if (isAlias(rawParam, raw.params))
            continue;
        std::optional<ParamDescription> param = mapParameter(rawParam);
        if (param && !effect.find(param->property))
            effect.params.push_back(std::move(*param));
    }
    tellNamesApart(effect.params);
    pairPoints(effect.params);
    if (effect.params.empty() && !raw.params.empty())
        effect.blockedBecause = "It is set up by free text only, for which a panel has no control.";
    return effect;
}

void settleColours(EffectDescription& effect)
{
    for (ParamDescription& param : effect.params)
        if (param.kind == ParamKind::Colour &&
            (param.components.empty() ? effect.service.starts_with("frei0r.") : param.components.size() == 3)) {
            param.format = "rgb";
            param.defaultColour[3] = 1.0;
        }
}

void leaveOutUnset(EffectDescription& effect, const RawEffect& raw)
{
    for (const RawParam& source : raw.params)
        if (source.defaultText.empty())
            std::erase_if(effect.params, [&source](const ParamDescription& param) {
                return param.property == source.identifier &&
                       (param.kind == ParamKind::Double || param.kind == ParamKind::Angle);
            });
}

std::string whyNoMaskByKind(const EffectDescription& effect)
{
    if (effect.medium == EffectDescription::Medium::Audio)
        return "It is an effect for sound, and a mask is a part of the picture.";
    // The masked picture is laid over the picture as it was, which would show where the effect makes it transparent.
    if (effect.category == "Keying")
        return "It makes the picture transparent, which a mask cannot limit.";
    return {};
}

std::string checkParam(const ParamDescription& param)
{
    if (param.property.empty() || param.name.empty())
        return "property or name is missing";
    std::string problem;
    if (param.kind == ParamKind::IntList || param.kind == ParamKind::TextList)
        problem = checkList(param);
    else if (param.kind == ParamKind::Double || param.kind == ParamKind::Angle)
        problem = checkRange(param);
    else if (param.kind == ParamKind::Range)
        problem = checkSoftRange(param);
    else if (param.kind == ParamKind::Point)
        problem = checkNumbers(param, param.defaultPoint);
    return problem.empty() ? checkDemo(param) : problem;
}

std::vector<std::string> checkEffect(const EffectDescription& effect)
{
    std::vector<std::string> problems;
    if (effect.service.empty() || effect.title.empty() || effect.category.empty())
        problems.push_back(effect.service + ": service, title or category is missing");
    for (const ParamDescription& param : effect.params) {
        if (const std::string problem = checkParam(param); !problem.empty())
            problems.push_back(effect.service + ", " + param.property + ": " + problem);
        if (effect.find(param.property) != &param)
            problems.push_back(effect.service + ", " + param.property + ": described twice");
        if (const std::string problem = checkCondition(effect, param); !problem.empty())
            problems.push_back(effect.service + ", " + param.property + ": " + problem);
    }
    return problems;
}

} // namespace workbench
