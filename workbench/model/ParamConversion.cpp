#include "workbench/model/ParamConversion.h"

#include "oribund/host/base/Numeric.h"
#include "oribund/host/effects/params/EffectValParam.h"
#include "workbench/model/EffectDescription.h"

namespace workbench
{

using oribund::Angle;
using oribund::ColourData;
using oribund::EffectValParam;
using oribund::isChoiceParam;
using oribund::isNumericParam;
using oribund::ListParam;
using oribund::ParamTraits;
using oribund::ParamValue;
using oribund::String;
using oribund::toWide;
using oribund::Vector2d;
using oribund::VideoInputParam;
using oribund::WString;

namespace
{
template <class T>
ListParam<T> makeList(const ParamDescription& description)
{
    std::vector<oribund::ListItem<T>> items;
    for (const ListItem& item : description.items) {
        const auto label = oribund::UIString(toWide(item.label));
        if constexpr (std::is_same_v<T, int>)
            items.push_back({oribund::parseInt(item.raw).value_or(static_cast<int>(items.size())), label});
        else
            items.push_back({String(item.raw), label});
    }
    return ListParam<T>(std::move(items), description.defaultItem);
}

VideoInputParam makeInputs(const ParamDescription& description)
{
    std::vector<WString> names;
    for (const ListItem& item : description.items)
        names.push_back(toWide(item.label));
    return VideoInputParam(std::move(names), description.defaultItem);
}

template <class P>
oribund::Kt::Ptr<oribund::EffectValParamBase> makeRanged(oribund::ParamInfo info, const P& initial, const P& minimum,
                                                         const P& maximum)
{
    return oribund::Kt::makePtr<EffectValParam<P>>(std::move(info), initial, minimum, maximum);
}

template <class P>
oribund::Kt::Ptr<oribund::EffectValParamBase> makePlain(oribund::ParamInfo info, const P& initial)
{
    return oribund::Kt::makePtr<EffectValParam<P>>(std::move(info), initial);
}

constexpr ColourData allFour(double number)
{
    return ColourData{{number, number, number, number}};
}

oribund::Kt::Ptr<oribund::EffectValParamBase> makeColour(const ParamDescription& d, oribund::ParamInfo info)
{
    if (d.displayFlags & oribund::ParamDisplay::kColourOffset)
        return makeRanged<ColourData>(std::move(info), ColourData{d.defaultColour}, allFour(d.minimum),
                                      allFour(d.maximum));
    return makeRanged<ColourData>(std::move(info), ColourData{d.defaultColour},
                                  ColourData{{0, 0, 0, d.format == "rgb" ? 1.0 : 0.0}}, allFour(1.0));
}

// A choice is kept as the text that its service has for it.

std::string keyOf(const ListParam<int>& list)
{
    return list.selectedItem() ? std::to_string(list.selectedItem()->value) : std::string();
}

std::string keyOf(const ListParam<String>& list)
{
    return list.selectedItem() ? std::string(list.selectedItem()->value.view()) : std::string();
}

std::string keyOf(const VideoInputParam& inputs)
{
    return std::to_string(inputs.selectedIndex());
}

bool selectKey(ListParam<int>& list, const std::string& key)
{
    const auto value = oribund::parseInt(key);
    return value && list.selectValue(*value);
}

bool selectKey(ListParam<String>& list, const std::string& key)
{
    return list.selectValue(String(key));
}

bool selectKey(VideoInputParam& inputs, const std::string& key)
{
    const auto index = oribund::parseInt(key);
    return index && inputs.select(*index);
}
} // namespace

oribund::Kt::Ptr<oribund::EffectValParamBase> makeParam(const ParamDescription& d, oribund::ParamInfo info)
{
    switch (d.kind) {
    case ParamKind::Double:
        return makeRanged<double>(std::move(info), d.defaultValue, d.minimum, d.maximum);
    case ParamKind::Angle:
        return makeRanged<Angle>(std::move(info), Angle{d.defaultValue}, Angle{d.minimum}, Angle{d.maximum});
    case ParamKind::Colour:
        return makeColour(d, std::move(info));
    case ParamKind::Range:
        return makeRanged<ColourData>(std::move(info), ColourData{d.defaultColour}, allFour(d.minimum),
                                      allFour(d.maximum));
    case ParamKind::Point:
        return makeRanged<Vector2d>(std::move(info), Vector2d{d.defaultPoint[0], d.defaultPoint[1]},
                                    Vector2d{d.minimum, d.minimum}, Vector2d{d.maximum, d.maximum});
    case ParamKind::Bool:
        return makePlain(std::move(info), d.defaultBool);
    case ParamKind::IntList:
        return makePlain(std::move(info), makeList<int>(d));
    case ParamKind::TextList:
        return makePlain(std::move(info), makeList<String>(d));
    case ParamKind::VideoInput:
        return makePlain(std::move(info), makeInputs(d));
    }
    return {};
}

PlainValue plainOf(const ParamValue& value)
{
    return std::visit(
        []<class P>(const P& typed) -> PlainValue {
            if constexpr (ParamTraits<P>::kChannels == 1)
                return ParamTraits<P>::split(typed)[0];
            else if constexpr (isNumericParam<P>)
                return ParamTraits<P>::split(typed);
            else if constexpr (isChoiceParam<P>)
                return keyOf(typed);
            else
                return typed;
        },
        value);
}

bool assignPlain(ParamValue& model, const PlainValue& plain)
{
    return std::visit(
        [&plain]<class P>(P& typed) {
            if constexpr (ParamTraits<P>::kChannels == 1) {
                const auto* const number = std::get_if<double>(&plain);
                return number && (typed = ParamTraits<P>::join({*number}), true);
            } else if constexpr (isNumericParam<P>) {
                const auto* const numbers = std::get_if<std::array<double, ParamTraits<P>::kChannels>>(&plain);
                return numbers && (typed = ParamTraits<P>::join(*numbers), true);
            } else if constexpr (isChoiceParam<P>) {
                const auto* const key = std::get_if<std::string>(&plain);
                return key && selectKey(typed, *key);
            } else {
                const auto* const own = std::get_if<P>(&plain);
                return own && (typed = *own, true);
            }
        },
        model);
}

ParamData dataOf(const oribund::EffectValParamBase& param)
{
    ParamData data;
    data.property = std::string(param.name().view());
    data.constant = plainOf(param.constantValue());
    data.keyframed = param.functionType() == oribund::EffectValParamFnType::Keyframed;
    if (data.keyframed)
        for (int channel = 0; channel < param.graph()->channelCount(); ++channel)
            data.channels.push_back(param.graph()->keyframes(channel));
    return data;
}

void restoreParam(oribund::EffectValParamBase& param, const ParamData& data)
{
    const oribund::JournalSuspension suspension(param);
    ParamValue constant = param.constantValue();
    if (assignPlain(constant, data.constant))
        param.setConstantValue(constant);
    if (!param.graph())
        return;
    const bool keyed = data.keyframed && !data.channels.empty() && !data.channels.front().empty() &&
                       param.graph()->setKeyframes(data.channels);
    if (!keyed)
        param.graph()->removeAllKeyframes();
    param.restoreFunctionType(keyed ? oribund::EffectValParamFnType::Keyframed
                                    : oribund::EffectValParamFnType::Constant);
}

} // namespace workbench
