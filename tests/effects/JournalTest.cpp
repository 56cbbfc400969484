#include "oribund/host/effects/EffectInstance.h"
#include "oribund/host/effects/params/EffectValParam.h"
#include "oribund/host/effects/params/iParamJournal.h"
#include "tests/effects/CurveSupport.h"
#include "tests/support/Listener.h"

#include <gtest/gtest.h>

using namespace oribund;
using namespace oribund::test;

namespace
{

/** Counts the changes of constants. */
class Recorder final : public iParamJournal
{
public:
    void constantChanged(EffectValParamBase&, const ParamValue&, const ParamValue&, ChangeKind) override { ++count; }

    void keyframeInserted(EffectValParamBase&, int, const Keyframe&, ChangeKind) override {}

    void keyframeErased(EffectValParamBase&, int, const Keyframe&, ChangeKind) override {}

    void keyframeChanged(EffectValParamBase&, int, const Keyframe&, const Keyframe&, ChangeKind) override {}

    void manyKeyframesChanging(EffectValParamBase&, ChangeKind) override {}

    void manyKeyframesChanged(EffectValParamBase&, ChangeKind) override {}

    void functionTypeChanged(EffectValParamBase&, EffectValParamFnType, EffectValParamFnType, ChangeKind) override {}

    void batchStarted(EffectValParamBase&, BatchReason, ChangeKind) override {}

    void batchEnded(EffectValParamBase&, BatchReason, ChangeKind) override {}

    std::size_t count = 0;
};

} // namespace

TEST(Journal, RestoringIsOneChangeAndRefusesWhatDoesNotFit)
{
    EffectValParam<Vector2d> param(ParamInfo{});
    param.setFunctionType(EffectValParamFnType::Keyframed, 0.5);
    const Listener listener(param.graph()->changes());
    {
        const JournalSuspension suspension(param);
        for (int channel = 0; channel < 2; ++channel) {
            EXPECT_TRUE(param.restoreKeyframeErased(channel, 0.5));
            EXPECT_TRUE(param.restoreKeyframeInserted(channel, key(0.25, 4.0)));
            EXPECT_TRUE(param.restoreKeyframeInserted(channel, key(0.75, 5.0)));
            EXPECT_FALSE(param.restoreKeyframeInserted(channel, key(0.75, 6.0)));
            EXPECT_FALSE(param.restoreKeyframeErased(channel, 0.5));
            EXPECT_FALSE(param.restoreKeyframeChanged(channel, key(0.5, 1.0)));
        }
        EXPECT_FALSE(param.restoreKeyframeInserted(2, key(0.1, 0.0)));
        EXPECT_FALSE(param.restoreKeyframeErased(-1, 0.25));
        EXPECT_FALSE(param.restoreConstant(ParamValue(1.0)));
        EXPECT_EQ(listener.count(), 0u);
    }
    EXPECT_EQ(listener.count(), 1u);
    EXPECT_EQ(param.getValue(0.5), (Vector2d{4.5, 4.5}));
    EffectValParam<bool> toggle(ParamInfo{});
    EXPECT_FALSE(toggle.restoreFunctionType(EffectValParamFnType::Keyframed));
    EXPECT_FALSE(toggle.restoreKeyframeInserted(0, key(0.1, 0.0)));
}

TEST(Journal, FollowsThePartsOfItsEffect)
{
    const auto makeParam = [](int number) {
        ParamInfo info;
        info.id = IdStamp(7, 7, number);
        return Kt::Ptr<EffectValParamBase>(Kt::makePtr<EffectValParam<double>>(info, 0.5));
    };
    Recorder journal;
    const auto own = makeParam(10);
    const auto late = makeParam(11);
    const auto inner = makeParam(12);
    {
        const auto effect = Kt::makePtr<EffectInstance>(IdStamp(7, 7, 1), String("test"), WString(L"Effect"));
        const auto child = Kt::makePtr<EffectInstance>(IdStamp(7, 7, 2), String("test"), WString(L"Child"));
        effect->addParam(own);
        child->addParam(inner);
        effect->addEmbeddedChild(child);
        effect->setJournal(&journal);
        effect->addParam(late);
        double value = 0.0;
        for (const auto& param : {own, late, inner})
            param->setConstantValue(ParamValue(value += 0.1));
        EXPECT_EQ(journal.count, 3u);
        effect->removeParam(late->id());
        late->setConstantValue(ParamValue(0.9));
        EXPECT_EQ(journal.count, 3u) << "what was taken away is not recorded any more";
    }
    own->setConstantValue(ParamValue(0.9));
    inner->setConstantValue(ParamValue(0.9));
    EXPECT_EQ(journal.count, 3u) << "what outlives its effect holds no journal that may be gone";
}
