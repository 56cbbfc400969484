#pragma once

#include "tests/support/Desk.h"
#include "tests/support/FakeView.h"

#include "oribund/host/effects/params/EffectValParam.h"

#include <gtest/gtest.h>

#include <cmath>
#include <initializer_list>
#include <memory>
#include <vector>

namespace oribund::test
{

/** An effect over the seconds 10 to 20 of an edit of 25 frames a second, and a panel for what shows it. */
class Track : public testing::Test
{
protected:
    Track()
        : canvas({600, 100})
        , panel(std::make_unique<OwnerPanel>(GlobCreationInfo(600, 100, &canvas)))
        , vob(std::make_unique<FakeVob>())
        , effect(addEffect(7))
    {
        panel->setBorder({});
        panel->open();
        vob->setCurrentTime(10.0);
    }

    Kt::Ptr<EffectInstance> addEffect(int number, double start = 10.0, double end = 20.0)
    {
        const auto added = Kt::makePtr<EffectInstance>(IdStamp(0, 0, number), String("blur"), WString(L"Blur"));
        vob->add(added, start, end);
        return added;
    }

    /** A parameter with keyframes at these edit times; constant without any. */
    Kt::Ptr<EffectValParam<double>> addParam(EffectInstance& to, const wchar_t* name,
                                             std::initializer_list<double> editTimes)
    {
        ParamInfo info;
        info.id = IdStamp(1, 0, to.paramCount() + 1);
        info.description = UIString(name);
        const auto param = Kt::makePtr<EffectValParam<double>>(info, 0.25, 0.0, 1.0);
        to.addParam(param);
        const NumRange<double> region = vob->monitor->getEditRegion(to.id());
        for (const double time : editTimes) {
            const double at = (time - region.start()) / region.length();
            if (!param->setFunctionType(EffectValParamFnType::Keyframed, at) || param->graph()->indexAt(at) < 0)
                param->graph()->addKeyframe(at);
        }
        vob->monitor->tell(EffectChangeCode::ParamSetChanged, to.id());
        return param;
    }

    /** The edit times of a parameter's keyframes, in whole frames. */
    static std::vector<int> frames(EffectValParamBase& param)
    {
        std::vector<int> all;
        for (int i = 0; i < param.graph()->size(); ++i)
            all.push_back(static_cast<int>(std::lround((10.0 + 10.0 * param.graph()->timeAt(i)) * 25.0)));
        return all;
    }

    int selected() const { return vob->monitor->getNumKeyframesSelected(IdStamp::wildcard(), {}); }

    bool key(Key key, unsigned modifiers = 0) { return canvas.inject(Event::keyPress(key, modifiers)); }

    Canvas canvas;
    std::unique_ptr<OwnerPanel> panel;
    std::unique_ptr<FakeVob> vob;
    Kt::Ptr<EffectInstance> effect;
};

} // namespace oribund::test
