#include "workbench/model/ParamConversion.h"

#include "oribund/host/base/Numeric.h"
#include "oribund/host/effects/params/EffectValParam.h"
#include "workbench/model/EffectDescription.h"

namespace workbench
{

using oribund::Angle;
using oribund::ColourData;
using oribund::EffectValParam;
using oribund::ListParam;
using oribund::ParamValue;
using oribund::String;
using oribund::toWide;
using oribund::Vector2d;
using oribund::VideoInputParam;
using oribund::WString;

namespace
{
template <class... Functions>
struct Overloaded : Functions... {
    using Functions::operator()...;
};

template <class... Functions>
Overloaded(Functions...) -> Overloaded<Functions...>;

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

} // namespace

oribund::Kt::Ptr<oribund::EffectValParamBase> makeParam(const ParamDescription& d, oribund::ParamInfo info)
{
    switch (d.kind) {
    case ParamKind::Double:
        return makeRanged<double>(std::move(info), d.defaultValue, d.minimum, d.maximum);
    case ParamKind::Angle:
        return makeRanged<Angle>(std::move(info), Angle{d.defaultValue}, Angle{d.minimum}, Angle{d.maximum});
    case ParamKind::Colour:
        return makeRanged<ColourData>(std::move(info), ColourData{d.defaultColour}, ColourData{{0, 0, 0, 0}},
                                      ColourData{{1, 1, 1, 1}});
    case ParamKind::Point:
        return makePlain(std::move(info), Vector2d{d.defaultPoint[0], d.defaultPoint[1]});
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
        Overloaded{
            [](double v) { return PlainValue(v); },
            [](bool v) { return PlainValue(v); },
            [](const Angle& v) { return PlainValue(v.degrees); },
            [](const ColourData& v) { return PlainValue(v.values); },
            [](const Vector2d& v) {
                return PlainValue(std::array<double, 2>{v.x, v.y});
            },
            [](const ListParam<int>& v) {
                return PlainValue(v.selectedItem() ? std::to_string(v.selectedItem()->value) : std::string());
            },
            [](const ListParam<String>& v) {
                return PlainValue(v.selectedItem() ? std::string(v.selectedItem()->value.view()) : std::string());
            },
            [](const VideoInputParam& v) { return PlainValue(std::to_string(v.selectedIndex())); },
        },
        value);
}

bool assignPlain(ParamValue& model, const PlainValue& plain)
{
    return std::visit(Overloaded{
                          [&](double& v) {
                              const auto* const p = std::get_if<double>(&plain);
                              return p && (v = *p, true);
                          },
                          [&](bool& v) {
                              const auto* const p = std::get_if<bool>(&plain);
                              return p && (v = *p, true);
                          },
                          [&](Angle& v) {
                              const auto* const p = std::get_if<double>(&plain);
                              return p && (v.degrees = *p, true);
                          },
                          [&](ColourData& v) {
                              const auto* const p = std::get_if<std::array<double, 4>>(&plain);
                              return p && (v.values = *p, true);
                          },
                          [&](Vector2d& v) {
                              const auto* const p = std::get_if<std::array<double, 2>>(&plain);
                              return p && (v = Vector2d{(*p)[0], (*p)[1]}, true);
                          },
                          [&](ListParam<int>& v) {
                              const auto* const p = std::get_if<std::string>(&plain);
                              const auto wanted = p ? oribund::parseInt(*p) : std::nullopt;
                              return wanted && v.selectValue(*wanted);
                          },
                          [&](ListParam<String>& v) {
                              const auto* const p = std::get_if<std::string>(&plain);
                              return p && v.selectValue(String(*p));
                          },
                          [&](VideoInputParam& v) {
                              const auto* const p = std::get_if<std::string>(&plain);
                              const auto wanted = p ? oribund::parseInt(*p) : std::nullopt;
                              return wanted && v.select(*wanted);
                          },
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
