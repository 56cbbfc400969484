#include "oribund/controls/keyframes/KeyframeText.h"

#include "oribund/controls/rows/KeyframeFloatCtrlsBase.h"
#include "oribund/cues/CueSearch.h"
#include "oribund/host/base/Numeric.h"
#include "oribund/host/edit/monitor/TrackEffects.h"
#include "oribund/host/effects/EffectInstance.h"
#include "oribund/host/effects/keyframes/KeyframeSpan.h"
#include "oribund/host/effects/params/EffectValParam.h"
#include "oribund/host/effects/params/ParamVisitor.h"
#include "oribund/host/services/TextIds.h"
#include "oribund/host/services/TextTable.h"

#include <algorithm>
#include <string>
#include <type_traits>

namespace oribund
{

namespace
{

using FXKeyframeHelpers::FXKeyframe;

constexpr std::size_t kMostDescribed = 4;

WString number(int value)
{
    return toWide(formatNumber(value));
}

std::wstring numbersOf(std::span<const double> values)
{
    constexpr int kDecimals = 3;
    std::wstring text;
    for (const double value : values) {
        text += text.empty() ? L"" : L" ";
        text += toWide(formatNumber(value, kDecimals)).view();
    }
    return text;
}

/** The value of a parameter at an effect time, as its row shows it. */
std::wstring valueAt(EffectValParamBase& param, double time)
{
    std::wstring text;
    visitParam(param, [&]<class P>(EffectValParam<P>& typed) {
        if constexpr (std::is_same_v<P, double>)
            text = KeyframeFloatCtrlsBase::displayOf(typed).format.textOf(typed.getValue(time)).view();
        else if constexpr (isNumericParam<P>)
            text = numbersOf(ParamTraits<P>::split(typed.getValue(time)));
        if constexpr (std::is_same_v<P, Angle>)
            text += L'\u00b0';
    });
    return text;
}

std::wstring describe(const FXKeyframe& keyframe, const WString& time, const TrackEffects& effects)
{
    const Kt::Ptr<EffectInstance> effect = effects.findEffect(keyframe.effect);
    const EffectInstance::ParamPtr param = effect ? effect->findParam(keyframe.param) : EffectInstance::ParamPtr();
    const Graph1dBase* const graph = animatedGraph(param.get());
    if (!graph)
        return {};
    const KeyframeSpan span(*graph);
    const UIString count = UIString(TextIds::kKeyframeCount)
                               .withPlaceholder(L"NUMBER", number(graph->lowerIndex(keyframe.time) - span.first + 1))
                               .withPlaceholder(L"COUNT", number(span.size()));
    std::wstring text(displayText(param->description()).view());
    for (const std::wstring& part :
         {std::wstring(time.view()), valueAt(*param, keyframe.time), std::wstring(displayText(count).view())})
        text += L", " + part;
    if (keyframe.selected)
        text += L", " + std::wstring(displayText(TextIds::kSelected).view());
    return text;
}

} // namespace

WString describeKeyframes(const std::vector<FXKeyframe>& keyframes, double editTime, const TrackEffects& effects,
                          const EditPtr& edit)
{
    const WString time = getCueTimecode(editTime, edit);
    std::wstring text;
    const auto append = [&text](const std::wstring& more) { text += (text.empty() ? L"" : L"\n") + more; };
    const std::size_t described = std::min(keyframes.size(), kMostDescribed);
    for (std::size_t i = 0; i < described; ++i)
        append(describe(keyframes[i], time, effects));
    if (described < keyframes.size()) {
        const WString rest = number(static_cast<int>(keyframes.size() - described));
        append(std::wstring(displayText(UIString(TextIds::kAndMore).withPlaceholder(L"COUNT", rest)).view()));
    }
    return WString(text);
}

} // namespace oribund
