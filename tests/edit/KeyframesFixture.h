#pragma once

#include "tests/support/FakeView.h"

#include "oribund/host/edit/monitor/CompoundEffectMonitorClient.h"
#include "oribund/host/effects/params/EffectValParam.h"

#include <gtest/gtest.h>

#include <initializer_list>
#include <vector>

namespace oribund::test
{

/** A viewer of a track, at 25 frames a second, and what it tells. */
class Keyframes : public testing::Test, public CompoundEffectMonitorClient
{
protected:
    using Number = Kt::Ptr<EffectValParam<double>>;
    using Set = FXKeyframeHelpers::KeyframeSet;

    Keyframes()
        : CompoundEffectMonitorClient(nullptr)
    {
        setMonitor(vob.monitor.get());
    }

    void handleFXModifications(const ChangeDescription& change) override { heard.push_back(change); }

    Kt::Ptr<EffectInstance> addEffect(int id, double start = 0.0, double end = 10.0, const char* tag = "test")
    {
        const auto effect = Kt::makePtr<EffectInstance>(IdStamp(1, id, 0), String(tag), WString(L"Test"));
        vob.add(effect, start, end);
        vob.monitor->tell(EffectChangeCode::ParamSetChanged, effect->id());
        heard.clear();
        return effect;
    }

    template <class P = double>
    Kt::Ptr<EffectValParam<P>> addParam(const Kt::Ptr<EffectInstance>& effect, const char* name,
                                        std::initializer_list<double> times = {}, P least = P{-100}, P most = P{100})
    {
        ParamInfo info;
        info.id = IdStamp(2, effect->paramCount() + 1, 0);
        info.name = String(name);
        const auto param = Kt::makePtr<EffectValParam<P>>(info, P{}, least, most);
        effect->addParam(param);
        for (const double time : times) {
            param->setFunctionType(EffectValParamFnType::Keyframed, time);
            param->graph()->addKeyframe(time);
        }
        tellOf(effect);
        return param;
    }

    /** What a host does after an edit that was not made through the monitor. */
    void tellOf(const Kt::Ptr<EffectInstance>& effect)
    {
        vob.monitor->tell(EffectChangeCode::KeyframesChanged, effect->id());
        heard.clear();
    }

    void selectAll(bool select = true)
    {
        vob.monitor->selectAllKeyframes(IdStamp::wildcard(), {}, select);
        heard.clear();
    }

    void select(const Kt::Ptr<EffectInstance>& effect, const EffectValParamBase& param, double time)
    {
        vob.monitor->selectKeyframe({effect->id(), param.id(), time}, true);
    }

    int selected() { return vob.monitor->getNumKeyframesSelected(IdStamp::wildcard(), {}); }

    Set setOf(const Kt::Ptr<EffectInstance>& effect)
    {
        CompoundEffectMonitor::KeyframeSets sets;
        vob.monitor->populateKeyframesForCompoundEffect(track, sets);
        return sets.at(effect);
    }

    static std::vector<double> timesOf(const EffectValParamBase& param)
    {
        std::vector<double> times;
        for (int i = 0; i < param.graph()->size(); ++i)
            times.push_back(param.graph()->timeAt(i));
        return times;
    }

    const IdStamp track = FakeMonitor::track();
    FakeVob vob;
    std::vector<ChangeDescription> heard;
};

} // namespace oribund::test
