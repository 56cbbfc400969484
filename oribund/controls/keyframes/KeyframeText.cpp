#include "oribund/controls/keyframes/KeyframeText.h"

#include "oribund/cues/CueSearch.h"
#include "oribund/host/base/Numeric.h"
#include "oribund/host/edit/monitor/TrackEffects.h"
#include "oribund/host/effects/EffectInstance.h"
#include "oribund/host/effects/keyframes/KeyframeSpan.h"
#include "oribund/host/effects/params/ParamText.h"
#include "oribund/host/services/TextIds.h"
#include "oribund/host/services/TextTable.h"

#include <algorithm>
#include <string>

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
         {std::wstring(time.view()), std::wstring(valueText(*param, param->valueAt(keyframe.time)).view()),
          std::wstring(displayText(count).view())})
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
